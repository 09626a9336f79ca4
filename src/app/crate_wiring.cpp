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
    dropHygiene();
    Q_EMIT cratesChanged();
}

void AppState::dropHygiene()
{
    m_hygiene.reset();
    ++m_hygieneDrops;
}

void AppState::prepareHygiene()
{
    runInBackground(
        platform::Priority::Utility,
        [crates = m_crates, result = std::shared_ptr<const ScanResult>(m_result)] {
            return std::make_shared<const CrateHygiene>(crates, result->tracks);
        },
        [this, drops = m_hygieneDrops](const std::shared_ptr<const CrateHygiene> &hygiene) {
            if (drops == m_hygieneDrops && !m_hygiene)
                m_hygiene = hygiene;
        });
}

void AppState::reloadCrates()
{
    if (m_result)
        setCrates(CrateStore::load(m_result->location));
}

} // namespace tarnwick
