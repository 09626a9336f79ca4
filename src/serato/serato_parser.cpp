#include "serato/serato_parser.h"

#include "platform/files.h"
#include "serato/shared_texts.h"
#include "serato/track_fields.h"

#include <cerrno>
#include <new>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoParser {

namespace {

constexpr Tag trackTag = "otrk"_tag;
constexpr Tag crateEntryTag = "ptrk"_tag;

/// Says where a sequence stopped ahead of its end.
void noteRest(Notes *notes, const QString &place, QByteArrayView bytes, qsizetype walked)
{
    if (notes && walked < bytes.size())
        notes->append(u"%1: the last %2 of %3 bytes are no record"_s.arg(place)
                          .arg(bytes.size() - walked)
                          .arg(bytes.size()));
}

size_t countOf(Tag tag, QByteArrayView bytes)
{
    size_t count = 0;
    walk(bytes, [&](const Field &field) { count += field.tag == tag; });
    return count;
}

/// Walks the records within each record of `tag`.
template <typename Visit>
void walkNested(QByteArrayView bytes, Tag tag, Notes *notes, Visit &&visitRecord)
{
    int index = 0;
    const qsizetype walked = walk(bytes, [&](const Field &record) {
        if (record.tag != tag)
            return;
        const qsizetype inside = visitRecord(record.payload);
        noteRest(notes, u"%1 %2"_s.arg(tag.text()).arg(index), record.payload, inside);
        ++index;
    });
    noteRest(notes, u"file"_s, bytes, walked);
}

} // namespace

std::vector<Field> fieldsIn(QByteArrayView bytes)
{
    std::vector<Field> fields;
    walk(bytes, [&](const Field &field) { fields.push_back(field); });
    return fields;
}

std::vector<SeratoTrack> tracksIn(QByteArrayView bytes, Notes *notes)
{
    std::vector<SeratoTrack> tracks;
    tracks.reserve(countOf(trackTag, bytes));
    SharedTexts texts;
    walkNested(bytes, trackTag, notes, [&](QByteArrayView payload) {
        SeratoTrack &track = tracks.emplace_back();
        return walk(payload, [&](const Field &field) { assignField(track, field, texts); });
    });
    return tracks;
}

Result<std::vector<SeratoTrack>> parseDatabase(const QString &path, Notes *notes)
{
    const Result<QByteArray> bytes = platform::readFile(path);
    if (!bytes)
        return tl::unexpected(bytes.error());
    try {
        return tracksIn(*bytes, notes);
    } catch (const std::bad_alloc &) {
        // Gigabytes of empty records take some fifty times their size as tracks.
        return tl::unexpected(platform::describeFailure(path, u"read"_s, ENOMEM));
    }
}

Result<QStringList> parseCrate(const QString &path, Notes *notes)
{
    const Result<QByteArray> bytes = platform::readFile(path);
    if (!bytes)
        return tl::unexpected(bytes.error());
    QStringList paths;
    walkNested(*bytes, trackTag, notes, [&](QByteArrayView payload) {
        return walk(payload, [&](const Field &field) {
            if (field.tag != crateEntryTag)
                return;
            if (const QString entry = field.text(); !entry.isEmpty())
                paths.append(entry);
        });
    });
    return paths;
}

} // namespace tarnwick::SeratoParser
