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

/// What was played, and what a library owns.
struct Keys
{
    QSet<QString> played;
    std::shared_ptr<const ScanResult> library;
    QSet<QString> owned;
};

Keys readKeys(const std::shared_ptr<const ScanResult> &library)
{
    Keys keys{{}, library, ownedKeysOf(library->tracks)};
    for (const PlayEvent &event : SeratoHistory::events([](const QString &) { return QString(); }))
        keys.played.insert(event.trackKey);
    return keys;
}

std::span<const ScannedTrack> tracksOf(const std::shared_ptr<ScanResult> &result)
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

const QStringList &AppState::lanes() const
{
    if (!m_lanes)
        m_lanes = lanesOf(tracksOf(m_result));
    return *m_lanes;
}

const QSet<QString> &AppState::ownedKeys() const
{
    if (!m_ownedKeys)
        m_ownedKeys = ownedKeysOf(tracksOf(m_result));
    return *m_ownedKeys;
}

void AppState::loadPlayedKeys()
{
    const auto work = [library = std::shared_ptr<const ScanResult>(m_result)] {
        return readKeys(library);
    };
    runInBackground(platform::Priority::Utility, work, [this](const Keys &keys) {
        m_playedKeys = keys.played;
        // They take too long for the main thread, so they are at hand ahead of the first question.
        // A library that has changed since is another object.
        if (keys.library == m_result)
            m_ownedKeys = keys.owned;
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
        [config = m_signal, lanes = laneMapOf(tracksOf(m_result))] {
            return contributeHistory(config, lanes);
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
