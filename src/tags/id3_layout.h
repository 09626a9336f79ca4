#pragma once

#include <QByteArrayView>

/// Where things lie in an ID3v2 tag, for all who read one. See docs/formats/id3v2.md.
namespace tarnwick::Id3 {

constexpr QByteArrayView magic = "ID3";
constexpr qsizetype headerSize = 10;
constexpr qsizetype majorOffset = 3;
constexpr qsizetype flagsOffset = 5;
constexpr qsizetype sizeOffset = 6;

constexpr qsizetype frameHeaderSize = 10;
constexpr qsizetype frameIdSize = 4;
constexpr qsizetype frameSizeOffset = 4;
constexpr qsizetype frameFlagsOffset = 8;

/// Unsynchronised tags (0x80) and those with an extended header (0x40) lie above it.
constexpr quint8 highestReadableFlags = 0x3F;

/// Bytes. Whoever reads tags alone, without the audio, leaves a larger tag be: this bounds the
/// memory that the tags of a library can ask for.
constexpr qsizetype largestReadTag = 7'999'999;

/// True if the bytes begin with the mark of a tag.
inline bool hasMagic(QByteArrayView bytes)
{
    return bytes.startsWith(magic);
}

/// True if the frames of a tag with this header can be read as they stand.
inline bool areFlagsReadable(QByteArrayView header)
{
    return quint8(header[flagsOffset]) <= highestReadableFlags;
}

/// Four bytes of seven bits each, the highest first. A top bit that should be clear is not masked
/// off: the shifted bytes then overlap.
constexpr qint64 syncsafe(const char *bytes)
{
    return qint64(uchar(bytes[0])) << 21 | qint64(uchar(bytes[1])) << 14 |
           qint64(uchar(bytes[2])) << 7 | qint64(uchar(bytes[3]));
}

} // namespace tarnwick::Id3
