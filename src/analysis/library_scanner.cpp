#include "analysis/library_scanner.h"

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/large_memory.h"
#include "platform/within_memory.h"
#include "serato/serato_parser.h"
#include "tags/serato_tags.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick::LibraryScanner {

namespace {

constexpr int tracksPerReport = 25;

/// Copies what the probe says of a file, if it says anything.
void probe(ScannedTrack &scanned, const QString &path)
{
    const auto presence = SeratoTags::presenceInRegularFile(path);
    if (!presence)
        return;
    scanned.hasMarkers = presence->hasMarkers;
    scanned.hasBeatGrid = presence->hasBeatGrid;
    scanned.hasGain = presence->hasGain;
    scanned.hasReplayGain = presence->hasReplayGain;
    scanned.autogain = presence->autogain;
    scanned.tagsRead = true;
}

ScannedTrack scanned(SeratoTrack &&track, ReadTags readTags)
{
    ScannedTrack result{std::move(track)};
    result.onDiskSizeBytes = result.track.fileSizeBytes;
    const QString path = result.track.absolutePath();
    const auto facts = platform::factsOf(path);
    if (!facts || facts->kind != platform::FileFacts::Kind::Regular)
        return result;
    result.existsOnDisk = true;
    result.onDiskSizeBytes = facts->size;
    if (readTags == ReadTags::Yes && SeratoTags::isSupported(path))
        probe(result, path);
    return result;
}

Result<ScanResult> scanAll(const SeratoLibrary::Location &location, ReadTags readTags,
                           const ProgressFunction &progress)
{
    progress({});
    Result<std::vector<SeratoTrack>> tracks = SeratoParser::parseDatabase(location.databasePath());
    if (!tracks)
        return tl::unexpected(tracks.error());
    ScanProgress state{u"Checking files and cues…"_s, 0, int(tracks->size())};
    progress(state);
    ScanResult result{location, {}, {}};
    result.tracks.reserve(tracks->size());
    platform::expectToFill(result.tracks.data(), result.tracks.capacity() * sizeof(ScannedTrack));
    for (SeratoTrack &track : *tracks) {
        result.tracks.push_back(scanned(std::move(track), readTags));
        ++(result.tracks.back().existsOnDisk ? state.filesOnDisk : state.missing);
        ++state.processed;
        if (state.processed % tracksPerReport == 0 || state.processed == state.total)
            progress(state);
    }
    state.phase = u"Scoring…"_s;
    progress(state);
    result.scannedAt = platform::now();
    return result;
}

} // namespace

Result<ScanResult> scan(const SeratoLibrary::Location &location, ReadTags readTags,
                        const ProgressFunction &progress)
{
    return platform::readWithinMemory(location.databasePath(),
                                      [&] { return scanAll(location, readTags, progress); });
}

} // namespace tarnwick::LibraryScanner
