#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwick {

/// Writes JSON straight into one byte buffer, with no document in memory. The caller gives the keys
/// in the order wanted and closes what it opens. Text is UTF-8, unescaped but for what JSON needs;
/// an unpaired surrogate becomes U+FFFD.
class JsonWriter
{
public:
    enum class Style { Compact, Pretty };

    explicit JsonWriter(QByteArray &out, Style style = Style::Compact)
        : m_out(out)
        , m_style(style)
    {}

    /// A writer that stands where a value goes at that depth of a pretty text, to encode a part of
    /// one by itself.
    static JsonWriter within(QByteArray &out, int depth);

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(QStringView name);

    void value(QStringView text);
    void value(const QString &text) { value(QStringView(text)); }
    void value(bool flag);
    void value(int number) { value(qint64(number)); }
    void value(qint64 number);
    void value(quint64 number);
    /// The shortest text that reads back as the same number; null for one that is not finite.
    void value(double number);
    /// A pointer would otherwise be taken for a Boolean.
    template <typename T>
    void value(T *) = delete;
    void null();
    /// Text that is a JSON value already, taken as it stands.
    void encoded(QByteArrayView json);

    template <typename T>
    void value(const std::optional<T> &maybe)
    {
        maybe ? value(*maybe) : null();
    }
    template <typename T>
    void member(QStringView name, const T &content)
    {
        key(name);
        value(content);
    }

    /// Text in quotation marks, as a value or key would be written.
    static void appendQuoted(QByteArray &out, QStringView text);

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void breakLine();

    QByteArray &m_out;
    Style m_style;
    int m_depth = 0;
    bool m_first = true;
    bool m_afterKey = false;
};

} // namespace tarnwick
