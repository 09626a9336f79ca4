#include "serato/serato_parser.h"

#include "platform/large_memory.h"
#include "platform/within_memory.h"
#include "serato/record_file.h"
#include "serato/shared_texts.h"
#include "serato/track_fields.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoParser {

namespace {

constexpr Tag trackTag = "otrk"_tag;
constexpr Tag crateEntryTag = "ptrk"_tag;

/// What a track with a few of its fields takes in a database, in bytes. Room that is not filled
/// costs next to nothing; to move all tracks because there is too little costs as much as reading.
constexpr quint64 leastUsualRecordSize = 256;
/// Beyond any library: a file that is larger than one gets no memory on trust.
constexpr quint64 mostTracksExpected = 1'000'000;

/// Says where a sequence stopped ahead of its end.
void noteRest(Notes *notes, const QString &place, quint64 rest, quint64 size)
{
    if (notes && rest > 0)
        notes->append(
            u"%1: the last %2 of %3 bytes are no record"_s.arg(place).arg(rest).arg(size));
}

/// The records of bytes in memory, taken as those of a `RecordFile` are.
class RecordBytes
{
public:
    explicit RecordBytes(QByteArrayView bytes)
        : m_bytes(bytes)
    {}

    Result<std::optional<Field>> next(Tag wanted)
    {
        for (;;) {
            ByteReader reader(m_bytes.sliced(m_walked));
            const std::optional<Field> field = takeField(reader);
            if (field)
                m_walked += reader.position();
            if (!field || field->tag == wanted)
                return field;
        }
    }

    quint64 size() const { return quint64(m_bytes.size()); }
    quint64 rest() const { return quint64(m_bytes.size() - m_walked); }

private:
    QByteArrayView m_bytes;
    qsizetype m_walked = 0;
};

/// Calls `visit(payload)` for every `otrk` record; it returns how many bytes of it were records.
template <typename Records, typename Visit>
Done walkTracks(Records &records, Notes *notes, Visit &&visit)
{
    int index = 0;
    for (;;) {
        const auto record = records.next(trackTag);
        if (!record)
            return tl::unexpected(record.error());
        if (!*record)
            break;
        const QByteArrayView payload = (*record)->payload;
        const qsizetype walked = visit(payload);
        if (walked < payload.size())
            noteRest(notes, u"otrk %1"_s.arg(index), quint64(payload.size() - walked),
                     quint64(payload.size()));
        ++index;
    }
    noteRest(notes, u"file"_s, records.rest(), records.size());
    return {};
}

template <typename Records>
Result<std::vector<SeratoTrack>> tracksOf(Records &records, Notes *notes)
{
    const quint64 expected = std::min(records.size() / leastUsualRecordSize, mostTracksExpected);
    std::vector<SeratoTrack> tracks;
    tracks.reserve(size_t(expected));
    platform::expectToFill(tracks.data(), tracks.capacity() * sizeof(SeratoTrack));
    SharedTexts texts(expected);
    const Done done = walkTracks(records, notes, [&](QByteArrayView payload) {
        SeratoTrack &track = tracks.emplace_back();
        const auto assign = [&](const Field &field) { assignField(track, field, texts); };
        const qsizetype walked = walk(payload, assign);
        texts.settle(); // the payload and the track stay where they are until here
        return walked;
    });
    if (!done)
        return tl::unexpected(done.error());
    return tracks;
}

Result<QStringList> pathsOf(const QString &path, Notes *notes)
{
    Result<RecordFile> file = RecordFile::open(path);
    if (!file)
        return tl::unexpected(file.error());
    QStringList paths;
    const auto collect = [&](const Field &field) {
        if (field.tag != crateEntryTag)
            return;
        if (const QString entry = field.text(); !entry.isEmpty())
            paths.append(entry);
    };
    const Done done = walkTracks(
        *file, notes, [&collect](QByteArrayView payload) { return walk(payload, collect); });
    if (!done)
        return tl::unexpected(done.error());
    return paths;
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
    RecordBytes records(bytes);
    return *tracksOf(records, notes); // bytes in memory can't fail
}

Result<std::vector<SeratoTrack>> parseDatabase(const QString &path, Notes *notes)
{
    return platform::readWithinMemory(path, [&]() -> Result<std::vector<SeratoTrack>> {
        Result<RecordFile> file = RecordFile::open(path);
        if (!file)
            return tl::unexpected(file.error());
        return tracksOf(*file, notes);
    });
}

Result<QStringList> parseCrate(const QString &path, Notes *notes)
{
    return platform::readWithinMemory(path, [&] { return pathsOf(path, notes); });
}

} // namespace tarnwick::SeratoParser
