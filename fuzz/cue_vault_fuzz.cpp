// The file of the cue vault: what can be read of it survives the next capture.

#include "fuzz_input.h"
#include "safety/cue_vault.h"
#include "scratch.h"
#include "support/tag_builder.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

ScannedTrack trackWithCues(const Scratch &scratch)
{
    const QByteArray file = testing::TagBuilder().object("Serato Markers2").file();
    ScannedTrack track;
    track.track.relativePath = scratch.put(u"a.mp3"_s, file).sliced(1);
    track.existsOnDisk = true;
    track.onDiskSizeBytes = quint64(file.size());
    track.hasMarkers = true;
    return track;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    static const bool isMade = QDir().mkpath(scratch.path(u"Tarnwick"_s));
    static const ScannedTrack track = trackWithCues(scratch);
    require(isMade, "a data folder");
    qputenv("XDG_DATA_HOME", scratch.path({}).toUtf8());
    scratch.put(u"Tarnwick/cuevault.json"_s, viewOf(data, size));

    CueVault vault;
    CueVault::Entries expected = *vault.entries();
    // An entry of this very size counts as a copy of the file, whatever it holds.
    const auto standing = expected.constFind(track.track.relativePath);
    const bool isNew =
        standing == expected.constEnd() || standing->fileSize() != track.onDiskSizeBytes;
    require(vault.capture(std::span(&track, 1)) == int(isNew), "what is new is captured");
    const auto captured = vault.entries();
    require(captured->contains(track.track.relativePath), "and is there");
    expected.insert(track.track.relativePath, captured->value(track.track.relativePath));
    require(*captured == expected, "beside all that was there");
    require(*CueVault().entries() == expected, "also in the file");
    return 0;
}
