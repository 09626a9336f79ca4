// Genres in the database, and gains in the tags of audio files.

#include "app/app_state.h"
#include "repair/tag_plan.h"
#include "repair/write_run.h"
#include "tags/geob_files.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool writeGenre(WriteRun &run, const SeratoTrack &track, const QString &genre)
{
    const bool changed = run.editDatabase([&](SeratoDocument &document) {
        return document.setText(track.relativePath, TagPlan::genreField, genre);
    });
    if (!changed)
        return false;
    run.patch(track.id, [genre](ScannedTrack &found) { found.track.genre = genre; });
    run.log(TagPlan::genreSet(track, genre));
    return true;
}

bool writeGain(WriteRun &run, const SeratoTrack &track, double gain)
{
    if (!run.wentWell(SeratoGEOB::writeReplayGain(gain, track.absolutePath())))
        return false;
    run.patch(track.id, [](ScannedTrack &found) { found.hasReplayGain = true; });
    return true;
}

} // namespace

void AppState::setGenre(const ScannedTrack &track, const QString &genre,
                        const std::optional<QString> &snapshotReason)
{
    if (!mayWrite(u"Close Serato before tagging."_s))
        return;
    WriteRun run(*this);
    if (snapshotReason)
        run.snapshot(*snapshotReason);
    if (!run.snapshotId())
        run.snapshot(TagPlan::genreReason(track.track));
    writeGenre(run, track.track, genre);
}

void AppState::setGenreBatch(const std::vector<ScannedTrack> &tracks, const QString &genre)
{
    if (!mayWrite(u"Close Serato before tagging."_s))
        return;
    WriteRun run(*this);
    run.snapshot(TagPlan::genreBatchReason(tracks.size(), genre));
    int count = 0;
    for (const ScannedTrack &track : tracks)
        count += writeGenre(run, track.track, genre) ? 1 : 0;
    run.succeed(TagPlan::genreBatchSummary(count, genre));
}

void AppState::normalizeLoudness(const ScannedTrack &track, double gain)
{
    if (!mayWrite(u"Close Serato before writing gain tags."_s))
        return;
    WriteRun run(*this);
    run.snapshot(TagPlan::gainReason(track.track));
    if (!writeGain(run, track.track, gain))
        return;
    run.log(TagPlan::gainWritten(track.track, gain));
    run.succeed(u"Wrote gain tag for "_s + track.track.fileName());
}

void AppState::normalizeAllLoudness(const std::vector<GainItem> &items)
{
    if (!mayWriteOrRefuse(u"Close Serato first."_s))
        return;
    WriteRun run(*this);
    run.snapshot(TagPlan::gainBatchReason(items.size()));
    int count = 0;
    for (const GainItem &item : items) {
        if (!writeGain(run, item.track.track, item.gain))
            continue;
        run.log(TagPlan::gainWrittenInBatch(item.track.track, item.gain));
        ++count;
    }
    run.succeed(TagPlan::gainBatchSummary(count));
}

} // namespace tarnwick
