#pragma once

#include "cli/text_table.h"
#include "foundation/json_writer.h"

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <optional>

namespace tarnwick::cli {

/// What a text stands for, told by its colour where there are colours.
enum class Tone { Good, Warn, Poor, Faint };

/// A stream of bytes to standard output that never holds a whole document: what has gathered is
/// passed on in pieces.
class Output
{
public:
    enum class Colours { No, Yes };

    explicit Output(std::FILE *stream, Colours colours = Colours::No)
        : m_stream(stream)
        , m_colours(colours)
        , m_json(m_buffer)
    {}
    ~Output() { flush(); }
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    /// Writes into this stream. Call `passOn` now and then in a long list.
    JsonWriter &json() { return m_json; }
    void text(const QString &text) { m_buffer += text.toUtf8(); }
    void line(const QString &text = {}) { m_buffer += text.toUtf8() + '\n'; }
    /// The text in the colour of a tone, which takes no place in a table.
    QString toned(Tone tone, const QString &text) const;

    /// How many rows of a list are shown; all of them without a limit.
    void setRowLimit(std::optional<qsizetype> rows) { m_rowLimit = rows; }
    qsizetype shownRows(qsizetype count) const { return qMin(m_rowLimit.value_or(count), count); }
    /// What is left out of a list of so many rows, in one line; nothing where all are shown.
    void tellRest(qsizetype count);
    /// A table that may be long: its first rows, and how many more there are.
    void list(const TextTable &table);

    /// Writes out what has gathered if that is much.
    void passOn();
    void flush();
    /// False once the stream has refused what was written out.
    bool isSound() const { return m_isSound; }

private:
    std::FILE *m_stream;
    const Colours m_colours;
    std::optional<qsizetype> m_rowLimit;
    bool m_isSound = true;
    QByteArray m_buffer;
    JsonWriter m_json;
};

} // namespace tarnwick::cli
