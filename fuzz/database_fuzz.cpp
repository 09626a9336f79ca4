// A database read and written again: a sound one comes back byte for byte, of a damaged one what
// lies ahead of each damage.

#include "fuzz_input.h"
#include "plain_records.h"
#include "serato/record_writer.h"
#include "serato/serato_document.h"
#include "serato/serato_parser.h"

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

bool isTrack(const PlainRecord &record)
{
    return record.tag() == QByteArrayView("otrk");
}

/// Of a track only the sound fields.
QByteArray soundPart(const PlainRecord &record)
{
    if (!isTrack(record))
        return record.whole.toByteArray();
    QByteArray sound;
    const QByteArrayView payload = record.payload();
    appendRecord(sound, "otrk"_tag, payload.first(sizeOf(plainRecordsIn(payload))));
    return sound;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = viewOf(data, size);
    const QList<PlainRecord> records = plainRecordsIn(input);
    const SeratoDocument document = SeratoDocument::fromBytes(input.toByteArray());
    require(document.recordCount() == records.size(), "every record is there");

    QByteArray expected;
    qsizetype tracks = 0;
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QByteArray sound = soundPart(records.at(i));
        require(document.record(i).bytes() == sound, "a record taken apart is its bytes");
        require(document.record(i).isTrack() == isTrack(records.at(i)), "what is a track");
        tracks += isTrack(records.at(i));
        expected += sound;
    }
    require(document.trackIndices().size() == tracks, "every track is there");
    require(SeratoParser::tracksIn(input).size() == size_t(tracks), "and is read");
    const QByteArray written = document.serialize();
    require(written == expected, "what is sound comes back byte for byte");
    require(SeratoDocument::fromBytes(written).serialize() == written, "and so ever after");
    return 0;
}
