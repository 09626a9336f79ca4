#pragma once

#include <QByteArray>
#include <QStringView>
#include <QtEndian>

namespace tarnwick::demo {

template <typename Integer>
void appendBigEndian(QByteArray &out, Integer value)
{
    const Integer swapped = qToBigEndian(value);
    out.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
}

template <typename Integer>
void appendLittleEndian(QByteArray &out, Integer value)
{
    const Integer swapped = qToLittleEndian(value);
    out.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
}

/// Text as UTF-16, big-endian, with neither mark nor terminator.
inline QByteArray utf16BigEndian(QStringView text)
{
    QByteArray out;
    out.reserve(text.size() * 2);
    for (const QChar unit : text) {
        appendBigEndian<quint16>(out, unit.unicode());
    }
    return out;
}

/// A three-byte colour as 0xRRGGBB, written red first.
inline void appendColour(QByteArray &out, quint32 colour)
{
    out.append(static_cast<char>(colour >> 16));
    out.append(static_cast<char>(colour >> 8));
    out.append(static_cast<char>(colour));
}

} // namespace tarnwick::demo
