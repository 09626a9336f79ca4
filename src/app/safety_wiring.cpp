// What AppState shows of the stores that make changes reversible.

#include "app/app_state.h"
#include "safety/snapshot_store.h"

namespace tarnwick {

QList<ChangeEntry> AppState::changeEntries() const
{
    return m_changeLog.isLoaded() ? m_changeLog.entries() : QList<ChangeEntry>();
}

void AppState::syncSafety()
{
    if (m_gatherings > 0) {
        m_safetyToSync = true;
        return;
    }
    m_snapshots = SnapshotStore::list();
    if (m_cueVault->isLoaded())
        m_cueProtected = m_cueVault->protectedCount();
    Q_EMIT safetyChanged();
}

/// Large stores are read in the background. The views start without them and learn when they are
/// there.
void AppState::syncSafetyOnceLoaded()
{
    if (m_changeLog.isLoaded() && m_cueVault->isLoaded())
        return;
    runInBackground(
        platform::Priority::UserInitiated,
        [vault = m_cueVault, waitForLog = m_changeLog.waiting()] {
            waitForLog();
            return vault->protectedCount();
        },
        [this](int) { syncSafety(); });
}

void AppState::captureCueVault()
{
    runInBackground(
        platform::Priority::Utility,
        [vault = m_cueVault, result = std::shared_ptr<const ScanResult>(m_result)] {
            return vault->capture(result->tracks);
        },
        [this](int written) {
            if (written > 0) {
                m_cueProtected = m_cueVault->protectedCount();
                Q_EMIT safetyChanged();
            }
        });
}

} // namespace tarnwick
