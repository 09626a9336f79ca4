// The figures that take longer to work out than a frame: kept, and prepared in the background for a
// view that is to open at once.

#include "app/app_state.h"

namespace tarnwick {

std::shared_ptr<const CrateHygiene> AppState::hygiene() const
{
    if (m_result && !m_hygiene.value)
        m_hygiene.value = std::make_shared<CrateHygiene>(m_crates, m_result->tracks);
    return m_hygiene.value;
}

std::shared_ptr<const std::vector<VersionPlaces>> AppState::versions() const
{
    if (m_result && !m_versions.value) {
        m_versions.value =
            std::make_shared<std::vector<VersionPlaces>>(versionPlacesOf(m_result->tracks));
    }
    return m_versions.value;
}

template <typename T, typename Work>
void AppState::prepare(Kept<T> AppState::*figure, Work work)
{
    Kept<T> &kept = this->*figure;
    if (!m_result || kept.value || kept.underWay)
        return;
    kept.underWay = true;
    runInBackground(
        platform::Priority::UserInitiated,
        [work, result = std::shared_ptr<const ScanResult>(m_result)] {
            return std::make_shared<const T>(work(result->tracks));
        },
        [this, figure, drops = kept.drops](const std::shared_ptr<const T> &value) {
            Kept<T> &now = this->*figure;
            if (drops == now.drops) {
                now.underWay = false;
                // Somebody may not have waited.
                if (!now.value)
                    now.value = value;
            }
            Q_EMIT figuresPrepared();
        });
}

void AppState::prepareHygiene()
{
    prepare(&AppState::m_hygiene, [crates = m_crates](const std::vector<ScannedTrack> &tracks) {
        return CrateHygiene(crates, tracks);
    });
}

void AppState::prepareVersions()
{
    prepare(&AppState::m_versions, versionPlacesOf);
}

} // namespace tarnwick
