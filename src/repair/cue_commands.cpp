// Putting saved cue points and beat grids back into audio files.

#include "app/app_state.h"
#include "foundation/dates.h"
#include "repair/write_run.h"
#include "tags/geob_files.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QList<CueVault::Loss> AppState::cueLosses() const
{
    return m_result ? m_cueVault->losses(m_result->tracks) : QList<CueVault::Loss>();
}

void AppState::restoreCues(const CueVault::Loss &loss)
{
    if (!mayWrite(u"Close Serato before restoring cues."_s))
        return;
    const SeratoTrack &track = loss.track.track;
    const auto saved = m_cueVault->entry(track.relativePath);
    if (!saved)
        return;
    WriteRun run(*this);
    run.snapshot(u"Before: restore cues · "_s + track.fileName());
    // All that the vault holds, not only what was lost: the copy is of one time.
    if (!run.wentWell(SeratoGEOB::restoreCueFrames(saved->payloads(), track.absolutePath())))
        return;
    run.patch(track.id, [saved](ScannedTrack &found) {
        found.hasMarkers = saved->hasMarkers();
        found.hasBeatGrid = saved->hasGrid();
    });
    const QString what = loss.what().toLower();
    run.log({.kind = ChangeEntry::Kind::RestoreCues,
             .target = track.fileName(),
             .detail = u"Restored %1 from %2"_s.arg(what, dateForPeople(saved->capturedAt()))});
    run.succeed(u"Restored %1 to "_s.arg(what) + track.fileName());
}

void AppState::restoreAllCues()
{
    const Gathering gathering(*this);
    const QList<CueVault::Loss> losses = cueLosses();
    for (const CueVault::Loss &loss : losses)
        restoreCues(loss);
}

} // namespace tarnwick
