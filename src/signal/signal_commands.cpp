// What AppState does with Signal: the chart, contributing plays, leaving, and what of the library
// was played.

#include "app/app_state.h"
#include "signal/lanes.h"
#include "signal/signal_client.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// A chart with what goes with it.
struct Chart
{
    QList<LandingTrack> tracks;
    std::optional<SignalClient::PoolStats> stats;
};

SignalResult<Chart> fetchChart(const SignalConfig &config, int windowDays,
                               const std::optional<QString> &lane,
                               const std::optional<QString> &city)
{
    return SignalClient::landing(config, windowDays, lane, city)
        .map([&](const QList<LandingTrack> &tracks) {
            // The chart is what counts: it stands without the totals too.
            const auto stats = SignalClient::stats(config);
            return Chart{tracks, stats ? std::optional(*stats) : std::nullopt};
        });
}

/// What became of a contribution.
struct Contribution
{
    qsizetype plays = 0; ///< read from the history, repeats among them
    SignalResult<qint64> youFeed;
};

Contribution contributeHistory(const SignalConfig &config, const QHash<QString, QString> &lanes)
{
    const auto laneFor = [&lanes](const QString &path) { return lanes.value(path, u"Unknown"_s); };
    const std::vector<PlayEvent> events = SeratoHistory::events(laneFor);
    return {qsizetype(events.size()), SignalClient::contribute(config, events)};
}

QSet<QString> readPlayedKeys()
{
    QSet<QString> keys;
    for (const PlayEvent &event : SeratoHistory::events([](const QString &) { return QString(); }))
        keys.insert(event.trackKey);
    return keys;
}

std::span<const ScannedTrack> tracksOf(const std::shared_ptr<const ScanResult> &result)
{
    return result ? std::span<const ScannedTrack>(result->tracks) : std::span<const ScannedTrack>();
}

} // namespace

void AppState::setSignal(const SignalConfig &config)
{
    m_signal = config;
    Q_EMIT signalChanged();
}

void AppState::saveSignal()
{
    m_signal.save();
}

const OwnedMusic &AppState::ownedMusic() const
{
    if (!m_ownedMusic)
        m_ownedMusic = ownedMusicOf(tracksOf(m_result));
    return *m_ownedMusic;
}

void AppState::prepareOwnedMusic(platform::Priority priority)
{
    if (m_ownedMusic || !m_result || m_ownedMusicOf == m_result.get())
        return;
    m_ownedMusicOf = m_result.get();
    // The work shares the library: one that changes meanwhile is another object from then on.
    const std::shared_ptr<const ScanResult> library = m_result;
    runInBackground(
        priority, [library] { return ownedMusicOf(library->tracks); },
        [this, library](const OwnedMusic &music) {
            if (m_ownedMusicOf == library.get())
                m_ownedMusicOf = nullptr;
            if (library != m_result)
                return;
            m_ownedMusic = music;
            Q_EMIT signalChanged();
        });
}

void AppState::loadPlayedKeys()
{
    runInBackground(platform::Priority::Utility, readPlayedKeys, [this](const QSet<QString> &keys) {
        m_playedKeys = keys;
        Q_EMIT signalChanged();
    });
}

void AppState::setSignalBusy(bool busy)
{
    m_signalBusy = busy;
    Q_EMIT signalChanged();
}

void AppState::refreshLanding(int windowDays, const std::optional<QString> &lane,
                              const std::optional<QString> &city)
{
    m_landingError.reset();
    setSignalBusy(true);
    runInBackground(
        platform::Priority::UserInitiated,
        [config = m_signal, windowDays, lane, city] {
            return fetchChart(config, windowDays, lane, city);
        },
        [this](const SignalResult<Chart> &outcome) {
            if (outcome) {
                m_landing = outcome->tracks;
                m_poolStats = outcome->stats;
            } else {
                // An old chart stays on the screen under the error.
                m_landingError = outcome.error().message();
            }
            setSignalBusy(false);
        });
}

void AppState::contributePlays()
{
    // The one place that keeps plays from going out.
    if (!m_signal.optIn) {
        showProblem(u"Turn on Signal sharing first."_s);
        return;
    }
    setSignalBusy(true);
    runInBackground(
        platform::Priority::UserInitiated,
        [config = m_signal, library = std::shared_ptr<const ScanResult>(m_result)] {
            return contributeHistory(config, laneMapOf(tracksOf(library)));
        },
        [this](const Contribution &done) {
            m_youFeed = done.youFeed.value_or(m_youFeed);
            setSignalBusy(false);
            if (done.youFeed)
                showToast(
                    u"Shared %1 plays — you feed %2 to the pool"_s.arg(done.plays).arg(m_youFeed));
            else
                showProblem(done.youFeed.error().message());
        });
}

void AppState::leaveSignal()
{
    runInBackground(
        platform::Priority::UserInitiated,
        [config = m_signal] { return SignalClient::leave(config); },
        [this](const SignalResult<qint64> &deleted) {
            if (!deleted) {
                showProblem(deleted.error().message());
                return;
            }
            m_signal.optIn = false;
            m_signal.save();
            m_youFeed = 0;
            Q_EMIT signalChanged();
            showToast(u"Left the pool — %1 of your plays erased"_s.arg(*deleted));
        });
}

} // namespace tarnwick
