#pragma once

#include <QByteArrayView>
#include <QtEndian>

#include <optional>

namespace tarnwick {

/// Moves through untrusted bytes. Every step is tested against what remains before it is taken, so
/// no input can make it look outside the view. The bytes must outlive the reader.
class ByteReader
{
public:
    explicit ByteReader(QByteArrayView bytes)
        : m_bytes(bytes)
    {}

    qsizetype position() const { return m_position; }
    qsizetype remaining() const { return m_bytes.size() - m_position; }
    /// All that remains; no move.
    QByteArrayView rest() const { return m_bytes.sliced(m_position); }
    bool has(quint64 count) const { return count <= quint64(remaining()); }

    /// The next `count` bytes, or nothing (and no move) if fewer remain.
    std::optional<QByteArrayView> take(quint64 count)
    {
        if (!has(count))
            return std::nullopt;
        const QByteArrayView taken = m_bytes.sliced(m_position, qsizetype(count));
        m_position += qsizetype(count);
        return taken;
    }

    /// The bytes ahead of the next zero byte, and a move past it; nothing, and no move, if there is
    /// no zero byte to come.
    std::optional<QByteArrayView> takeThroughZero()
    {
        const qsizetype length = rest().indexOf('\0');
        if (length < 0)
            return std::nullopt;
        const QByteArrayView taken = rest().first(length);
        m_position += length + 1;
        return taken;
    }

    /// The next four bytes as a big-endian number, or nothing (and no move) if fewer remain.
    std::optional<quint32> takeBigEndian32()
    {
        const auto bytes = take(4);
        if (!bytes)
            return std::nullopt;
        return qFromBigEndian<quint32>(bytes->data());
    }

private:
    QByteArrayView m_bytes;
    qsizetype m_position = 0;
};

} // namespace tarnwick
