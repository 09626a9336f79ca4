#pragma once

#include "foundation/byte_reader.h"
#include "foundation/result.h"
#include "foundation/utf16.h"
#include "serato/serato_track.h"
#include "serato/tag.h"

#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

/// Reads Serato's files, all of which are one flat sequence of records after another:
///
///     offset 0   4 bytes   tag, ASCII
///     offset 4   4 bytes   length of the payload, big-endian
///     offset 8   length    payload; for some tags such a sequence again
///
/// Bad content gives less data and never a failure; only a file that can't be read at all fails.
/// Safe on any thread.
namespace tarnwick::SeratoParser {

constexpr qsizetype headerSize = 8; ///< bytes ahead of each payload

/// One record of a sequence. The payload is a slice of the bytes walked and lives as long as they.
struct Field
{
    Tag tag;
    QByteArrayView payload;

    /// The payload as UTF-16, high byte first; see decodeUtf16BigEndian.
    QString text() const { return decodeUtf16BigEndian(payload); }
    /// The payload as a big-endian number of any width; the last eight bytes of a longer one.
    quint64 number() const
    {
        quint64 value = 0;
        for (const char byte : payload)
            value = value << 8 | uchar(byte);
        return value;
    }
    /// True if there is a first byte and it isn't 0.
    bool flag() const { return !payload.isEmpty() && payload.front() != 0; }
};

/// The record at the reader's place. Nothing if what remains holds no whole record, or its tag is
/// not ASCII; the reader's place is of no use then.
inline std::optional<Field> takeField(ByteReader &reader)
{
    const auto header = reader.take(headerSize);
    if (!header)
        return std::nullopt;
    const std::optional<Tag> tag = Tag::at(header->data());
    if (!tag)
        return std::nullopt;
    const auto payload = reader.take(qFromBigEndian<quint32>(header->data() + Tag::size));
    if (!payload)
        return std::nullopt;
    return Field{*tag, *payload};
}

/// Calls `visit(Field)` for each record of one sequence in order, and stops silently at the first
/// that is cut or has no ASCII tag. Returns how many bytes were walked: all of them for a sound
/// sequence.
template <typename Visit>
qsizetype walk(QByteArrayView bytes, Visit &&visit)
{
    ByteReader reader(bytes);
    qsizetype walked = 0;
    while (const std::optional<Field> field = takeField(reader)) {
        walked = reader.position();
        visit(*field);
    }
    return walked;
}

/// The records of one level.
std::vector<Field> fieldsIn(QByteArrayView bytes);

/// What a reader left out, a line each; for tests and for people who look into a file.
using Notes = QStringList;

/// The tracks of the bytes of a `database V2`, as parseDatabase gives those of a file.
std::vector<SeratoTrack> tracksIn(QByteArrayView bytes, Notes *notes = nullptr);

/// The tracks of a `database V2`, one for each of its `otrk` records, in file order; an empty or
/// damaged one gives an empty or partial track.
Result<std::vector<SeratoTrack>> parseDatabase(const QString &path, Notes *notes = nullptr);

/// The paths of a crate as they stand in it, in file order, with duplicates but no empty ones.
Result<QStringList> parseCrate(const QString &path, Notes *notes = nullptr);

} // namespace tarnwick::SeratoParser
