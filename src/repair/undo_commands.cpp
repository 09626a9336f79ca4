// Taking changes back: one by one from the change log, or all at once to a snapshot.
//
// What an undo can do differs from kind to kind. A relinked path, a removed record with its held
// file and a genre come back. A gain, a crate and restored cues stay as they are, and only the
// entry is marked: crates come back by a rollback, tags in audio files by nothing.

#include "app/app_state.h"
#include "platform/files.h"
#include "repair/tag_plan.h"
#include "repair/undo_plan.h"
#include "repair/write_run.h"
#include "safety/snapshot_store.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Each of these is false where the entry must not be marked as undone.

bool undoRelink(WriteRun &run, const ChangeEntry &entry, const ScanResult &result)
{
    if (!entry.before || !entry.after)
        return true;
    const bool changed = run.editDatabase([&](SeratoDocument &document) {
        return document.revertRelink(*entry.after, *entry.before);
    });
    if (!changed)
        return false;
    if (const ScannedTrack *track = UndoPlan::trackAtPath(result, *entry.after)) {
        run.patch(track->id(), [before = *entry.before](ScannedTrack &found) {
            found.track.relativePath = before;
            found.track.flaggedMissing = true;
            found.existsOnDisk = platform::isRegularFile(u'/' + before);
        });
    }
    return true;
}

bool undoTag(WriteRun &run, const ChangeEntry &entry, const ScanResult &result)
{
    const ScannedTrack *track = UndoPlan::trackNamed(result, entry.target);
    if (!track)
        return true;
    const QString genre = UndoPlan::genreBefore(entry);
    const bool changed = run.editDatabase([&](SeratoDocument &document) {
        return document.setText(track->track.relativePath, TagPlan::genreField, genre);
    });
    if (changed)
        run.patch(track->id(), [genre](ScannedTrack &found) { found.track.genre = genre; });
    return changed;
}

/// Puts a record back as it stood in the snapshot, whatever Serato kept in it. Silent where the
/// snapshot has gone or holds no such record.
void reinsertFromSnapshot(WriteRun &run, const QString &snapshotId, const QString &absolutePath)
{
    const auto record = UndoPlan::recordInSnapshot(snapshotId, absolutePath);
    if (!record)
        return;
    (void)RepairEngine::mutate(run.location(),
                               [&](SeratoDocument &document) { return document.insert(*record); });
    run.append(UndoPlan::unscannedTrack(*record));
}

} // namespace

void AppState::undo(const ChangeEntry &entry)
{
    if (!mayWrite(u"Close Serato before undoing."_s))
        return;
    WriteRun run(*this);
    if (entry.kind == ChangeEntry::Kind::Relink && !undoRelink(run, entry, *m_result))
        return;
    if (entry.kind == ChangeEntry::Kind::Tag && !undoTag(run, entry, *m_result))
        return;
    if (entry.kind == ChangeEntry::Kind::Dedupe) {
        // A file that can't go back stays held; its record comes back all the same.
        if (entry.holdingId)
            (void)m_holding.restore(*entry.holdingId);
        if (entry.snapshotId && entry.before)
            reinsertFromSnapshot(run, *entry.snapshotId, *entry.before);
    }
    (void)m_changeLog.markReversed(entry.id);
    run.end();
    showToast(u"Undone: "_s + entry.target);
}

void AppState::undoEverything()
{
    const Gathering gathering(*this);
    const QList<ChangeEntry> entries = m_changeLog.entries();
    for (const ChangeEntry &entry : entries) {
        if (entry.isReversible())
            undo(entry);
    }
    showToast(u"Everything reversible has been undone."_s);
}

void AppState::restoreSnapshot(const Snapshot &snapshot)
{
    if (!m_result)
        return;
    if (m_seratoRunning) {
        showProblem(u"Close Serato before rolling back."_s);
        return;
    }
    setBusy(u"Rolling back…"_s);
    runInBackground(
        platform::Priority::UserInitiated,
        [snapshot, location = m_result->location] {
            return SnapshotStore::restore(snapshot, location);
        },
        [this, snapshot, location = m_result->location](const Done &outcome) {
            if (outcome)
                return didRollBack(snapshot, location);
            setBusy(std::nullopt);
            syncSafety();
            showProblem(outcome.error().message);
        });
}

void AppState::didRollBack(const Snapshot &snapshot, const SeratoLibrary::Location &location)
{
    (void)m_changeLog.append({.kind = ChangeEntry::Kind::Rollback,
                              .target = location.folderPath(),
                              .detail = u"Rolled back to "_s + snapshot.shortDate(),
                              .reversibleDays = std::nullopt});
    setBusy(std::nullopt);
    syncSafety();
    showToast(u"Library rolled back to "_s + snapshot.shortDate());
    rescan();
}

} // namespace tarnwick
