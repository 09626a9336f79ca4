#include "cover_art.h"

#include "byte_writing.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tarnwick::demo {

namespace {

constexpr std::array<quint32, 256> crcTable()
{
    std::array<quint32, 256> table{};
    for (quint32 i = 0; i < table.size(); ++i) {
        quint32 value = i;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1) != 0 ? 0xEDB88320 ^ (value >> 1) : value >> 1;
        }
        table[i] = value;
    }
    return table;
}

quint32 crc(const QByteArray &bytes)
{
    static constexpr auto table = crcTable();
    quint32 value = ~0U;
    for (const char byte : bytes) {
        value = table[(value ^ static_cast<quint8>(byte)) & 0xFF] ^ (value >> 8);
    }
    return ~value;
}

quint32 adler(const QByteArray &bytes)
{
    constexpr quint32 modulus = 65521;
    quint32 low = 1;
    quint32 high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<quint8>(byte)) % modulus;
        high = (high + low) % modulus;
    }
    return high << 16 | low;
}

void appendChunk(QByteArray &out, const char *type, const QByteArray &content)
{
    const QByteArray checked = QByteArray(type, 4) + content;
    appendBigEndian(out, static_cast<quint32>(content.size()));
    out.append(checked);
    appendBigEndian(out, crc(checked));
}

/// A zlib stream of stored blocks.
QByteArray stored(const QByteArray &bytes)
{
    constexpr qsizetype largestBlock = 65535;
    QByteArray out("\x78\x01");
    for (qsizetype at = 0; at < bytes.size(); at += largestBlock) {
        const auto length = static_cast<quint16>(std::min(largestBlock, bytes.size() - at));
        out.append(at + length == bytes.size() ? '\1' : '\0');
        appendLittleEndian(out, length);
        appendLittleEndian(out, static_cast<quint16>(~length));
        out.append(bytes.mid(at, length));
    }
    appendBigEndian(out, adler(bytes));
    return out;
}

QByteArray stripes(int width, quint32 seed)
{
    const int slope = static_cast<int>(seed % 5) - 2;
    const int spacing = 9 + static_cast<int>((seed >> 4) % 40);
    QByteArray rows;
    rows.reserve(qsizetype(width) * (width * 3 + 1));
    for (int y = 0; y < width; ++y) {
        rows.append('\0'); // no row filter
        for (int x = 0; x < width; ++x) {
            const int wave = std::abs((x + slope * y) % (2 * spacing)) * 127 / (2 * spacing);
            appendColour(rows, (seed & 0x7F7F7F) + static_cast<quint32>(wave) * 0x010101);
        }
    }
    return rows;
}

} // namespace

QByteArray coverArt(int width, quint32 seed)
{
    QByteArray header;
    appendBigEndian(header, static_cast<quint32>(width));
    appendBigEndian(header, static_cast<quint32>(width));
    header.append(QByteArray::fromHex("0802000000")); // 8 bit, true colour, not interlaced

    QByteArray png("\x89PNG\r\n\x1A\n");
    appendChunk(png, "IHDR", header);
    appendChunk(png, "IDAT", stored(stripes(width, seed)));
    appendChunk(png, "IEND", {});
    return png;
}

} // namespace tarnwick::demo
