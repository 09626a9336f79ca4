#include "app/app_state.h"
#include "platform/files.h"
#include "repair/relink_plan.h"
#include "repair/write_run.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

void AppState::relink(const ScannedTrack &track, const QUrl &file)
{
    if (!mayWrite(u"Close Serato before relinking."_s))
        return;
    const QString oldPath = track.track.relativePath;
    const QString newPath = RelinkPlan::relativePathOf(file);
    WriteRun run(*this);
    run.snapshot(RelinkPlan::relinkReason(track.track));
    const bool changed = run.editDatabase(
        [&](SeratoDocument &document) { return document.relink(oldPath, newPath); });
    if (!changed)
        return;
    run.patch(track.id(), [newPath, facts = platform::factsOf(file.toLocalFile())](auto &found) {
        found.track.relativePath = newPath;
        found.track.flaggedMissing = false;
        found.existsOnDisk = true;
        if (facts)
            found.onDiskSizeBytes = facts->size;
    });
    run.log(RelinkPlan::relinked(track.track, newPath));
    run.succeed(u"Relinked "_s + track.track.fileName());
}

void AppState::dropFromLibrary(const ScannedTrack &track)
{
    if (!mayWrite(u"Close Serato before editing the library."_s))
        return;
    WriteRun run(*this);
    run.snapshot(RelinkPlan::dropReason(track.track));
    const bool changed = run.editDatabase(
        [&](SeratoDocument &document) { return document.removeTrack(track.track.relativePath); });
    if (!changed)
        return;
    run.remove(track.id());
    run.log(RelinkPlan::dropped(track.track));
    run.succeed(u"Removed dead entry for "_s + track.track.fileName());
}

} // namespace tarnwick
