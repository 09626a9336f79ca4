// The crates of the present library, and what is worked out from them.

#include "app/app_state.h"
#include "serato/crate_store.h"

namespace tarnwick {

const TrackMap &AppState::trackMap() const
{
    if (!m_trackMap)
        m_trackMap = m_result ? trackMapOf(m_result->tracks) : TrackMap();
    return *m_trackMap;
}

std::vector<ScannedTrack> AppState::tracksInCrates(const QSet<QString> &names) const
{
    return tarnwick::tracksInCrates(names, m_crates, trackMap());
}

void AppState::setCrates(const QList<LoadedCrate> &crates)
{
    m_crates = crates;
    m_hygiene.drop();
    Q_EMIT cratesChanged();
}

void AppState::reloadCrates()
{
    if (m_result)
        setCrates(CrateStore::load(m_result->location));
}

} // namespace tarnwick
