#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

#include <cstring>

namespace tarnwick {

/// A long text in UTF-8 that is written straight into one buffer, piece by piece. An unpaired
/// surrogate becomes U+FFFD.
class Utf8Text
{
public:
    QByteArrayView view() const { return QByteArrayView(m_buffer).first(m_size); }

    /// Keeps the buffer.
    void clear() { m_size = 0; }

    void add(QByteArrayView utf8)
    {
        char *to = room(utf8.size());
        std::memcpy(to, utf8.data(), size_t(utf8.size()));
        m_size += utf8.size();
    }
    void add(char byte)
    {
        *room(1) = byte;
        ++m_size;
    }

    void addText(QStringView text);
    /// With the five characters that XML keeps for itself as entities. Nothing else is touched:
    /// control characters pass through as they are.
    void addXml(QStringView text);
    /// Percent-encodes all bytes but ASCII letters, digits, "-", ".", "_", "~" and "/", with
    /// upper-case digits.
    void addPercentEncoded(QStringView text);
    /// In decimal, without grouping.
    void addNumber(qint64 number);

private:
    /// Where the next bytes go; at least so many fit.
    char *room(qsizetype count)
    {
        if (m_buffer.size() - m_size < count)
            grow(count);
        return m_data + m_size;
    }
    void grow(qsizetype count);
    void setEnd(const char *end) { m_size = end - m_data; }

    QByteArray m_buffer;    ///< its bytes from `m_size` on are free
    char *m_data = nullptr; ///< of the buffer
    qsizetype m_size = 0;
};

} // namespace tarnwick
