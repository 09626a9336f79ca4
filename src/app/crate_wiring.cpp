// The crates of the present library, and what is worked out from them.

#include "app/app_state.h"
#include "serato/crate_store.h"

namespace tarnwick {

std::shared_ptr<const CrateHygiene> AppState::hygiene() const
{
    if (m_result && !m_hygiene)
        m_hygiene = std::make_shared<CrateHygiene>(m_crates, m_result->tracks);
    return m_hygiene;
}

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
    m_hygiene.reset();
    Q_EMIT cratesChanged();
}

void AppState::reloadCrates()
{
    if (m_result)
        setCrates(CrateStore::load(m_result->location));
}

} // namespace tarnwick
