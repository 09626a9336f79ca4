// Manual snapshots. Those that guard a write are taken by the write itself.

#include "app/app_state.h"
#include "foundation/byte_format.h"
#include "safety/snapshot_store.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

void AppState::takeSnapshot(const QString &reason)
{
    const auto location = m_result ? std::optional(m_result->location) : defaultLocation();
    if (!location) {
        showProblem(u"Load a library first."_s);
        return;
    }
    setBusy(u"Taking snapshot…"_s);
    runInBackground(
        platform::Priority::UserInitiated,
        [location = *location, reason] { return SnapshotStore::create(location, reason); },
        [this](const Result<Snapshot> &outcome) {
            setBusy(std::nullopt);
            if (outcome)
                didSnapshot(*outcome);
            else
                showProblem(outcome.error().message);
        });
}

/// Only manual snapshots have an entry of their own in the log.
void AppState::didSnapshot(const Snapshot &snapshot)
{
    m_changeLog.append({.kind = ChangeEntry::Kind::Snapshot,
                        .target = snapshot.sourcePath,
                        .detail = snapshot.reason,
                        .reversibleDays = std::nullopt,
                        .snapshotId = snapshot.id});
    syncSafety();
    showToast(u"Snapshot taken — %1 files, %2"_s.arg(snapshot.fileCount)
                  .arg(ByteFmt::string(snapshot.byteSize)));
}

} // namespace tarnwick
