// Records read from a file through a small buffer, beside those of the same bytes in memory; and
// the tracks of a database likewise.

#include "fuzz_input.h"
#include "plain_records.h"
#include "scratch.h"
#include "serato/record_file.h"
#include "serato/serato_parser.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

void checkRecords(const QString &path, QByteArrayView bytes, Tag wanted)
{
    auto file = RecordFile::open(path);
    require(file.has_value(), "the file can be opened");
    require(file->size() == quint64(bytes.size()), "the size");
    for (const PlainRecord &each : plainRecordsIn(bytes)) {
        if (Tag::at(each.tag().data()) != wanted)
            continue;
        const auto next = file->next(wanted);
        require(next && *next, "there is a next record");
        require((*next)->payload == each.payload(), "the payload");
    }
    const auto behind = file->next(wanted);
    require(behind && !*behind, "there is no record more");
}

void checkTracks(const QString &path, QByteArrayView bytes)
{
    SeratoParser::Notes notes;
    SeratoParser::Notes notesOfFile;
    const std::vector<SeratoTrack> tracks = SeratoParser::tracksIn(bytes, &notes);
    auto ofFile = SeratoParser::parseDatabase(path, &notesOfFile);
    require(ofFile && ofFile->size() == tracks.size(), "as many tracks");
    for (size_t i = 0; i < tracks.size(); ++i) {
        (*ofFile)[i].id = tracks[i].id;
        require((*ofFile)[i] == tracks[i], "the same track");
    }
    require(notes == notesOfFile, "the same notes");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    const QByteArrayView bytes = viewOf(data, size);
    const QString path = scratch.put(u"database V2"_s, bytes);
    checkRecords(path, bytes, "otrk"_tag);
    checkRecords(path, bytes, "vrsn"_tag);
    checkTracks(path, bytes);
    return 0;
}
