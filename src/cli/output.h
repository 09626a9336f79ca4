#pragma once

#include "foundation/json_writer.h"

#include <QByteArray>
#include <QString>

#include <cstdio>

namespace tarnwick::cli {

/// A stream of bytes to standard output that never holds a whole document: what has gathered is
/// passed on in pieces.
class Output
{
public:
    explicit Output(std::FILE *stream)
        : m_stream(stream)
        , m_json(m_buffer)
    {}
    ~Output() { flush(); }
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    /// Writes into this stream. Call `passOn` now and then in a long list.
    JsonWriter &json() { return m_json; }
    void text(const QString &text) { m_buffer += text.toUtf8(); }
    void line(const QString &text = {}) { m_buffer += text.toUtf8() + '\n'; }

    /// Writes out what has gathered if that is much.
    void passOn();
    void flush();
    /// False once the stream has refused what was written out.
    bool isSound() const { return m_isSound; }

private:
    std::FILE *m_stream;
    bool m_isSound = true;
    QByteArray m_buffer;
    JsonWriter m_json;
};

} // namespace tarnwick::cli
