#include "screens/signal/signal_presenter.h"

#include "screens/signal/signal_figures.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace tarnwick {

SignalPresenter::SignalPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_window(SignalFigures::firstWindow)
    , m_lane(SignalFigures::everyLane.toString())
    , m_asksForServer(server().isEmpty())
    , m_typedServer(server())
{
    connect(&app, &AppState::signalChanged, this, &SignalPresenter::readSignal);
    connect(&app, &AppState::libraryChanged, this, &SignalPresenter::readLibrary);
    readLibrary();
    if (!server().isEmpty())
        reload();
}

QString SignalPresenter::shareSymbol() const
{
    return sharing() ? u"dot.radiowaves.left.and.right"_s : u"wifi.slash"_s;
}

QString SignalPresenter::shareTitle() const
{
    return SignalFigures::shareTitle(sharing());
}

QString SignalPresenter::shareLine() const
{
    return SignalFigures::shareLine(sharing(), m_app.youFeed());
}

QString SignalPresenter::contributeTitle() const
{
    return SignalFigures::contributeTitle(busy());
}

QString SignalPresenter::pool() const
{
    return m_app.poolStats() ? SignalFigures::pool(*m_app.poolStats()) : QString();
}

QString SignalPresenter::host() const
{
    return SignalFigures::host(server());
}

QStringList SignalPresenter::windows() const
{
    QStringList titles;
    for (const int days : SignalFigures::windows)
        titles += SignalFigures::windowTitle(days);
    return titles;
}

int SignalPresenter::window() const
{
    const auto *const first = std::begin(SignalFigures::windows);
    return int(std::find(first, std::end(SignalFigures::windows), m_window) - first);
}

QString SignalPresenter::laneTitle() const
{
    return SignalFigures::laneTitle(m_lane);
}

void SignalPresenter::setServer(const QString &url)
{
    SignalConfig config = m_app.signal();
    config.serverUrl = url;
    m_typedServer = url;
    m_app.setSignal(config);
}

void SignalPresenter::setApiKey(const QString &key)
{
    SignalConfig config = m_app.signal();
    config.apiKey = key;
    save(config);
}

void SignalPresenter::setCity(const QString &city)
{
    SignalConfig config = m_app.signal();
    config.city = city;
    save(config);
}

void SignalPresenter::connectToServer()
{
    m_app.saveSignal();
    settleForm();
    reload();
}

void SignalPresenter::toggleSharing()
{
    SignalConfig config = m_app.signal();
    config.optIn = !config.optIn;
    save(config);
}

void SignalPresenter::contribute()
{
    m_app.contributePlays();
}

void SignalPresenter::toggleSetup()
{
    if (m_showsSetup)
        return closeSetup();
    m_showsSetup = true;
    Q_EMIT changed();
}

void SignalPresenter::closeSetup()
{
    if (!m_showsSetup)
        return;
    m_showsSetup = false;
    settleForm();
    showChart();
}

void SignalPresenter::leave()
{
    m_app.leaveSignal();
}

void SignalPresenter::chooseWindow(int index)
{
    m_window = SignalFigures::windows[index];
    reload();
}

void SignalPresenter::chooseLane(int index)
{
    m_lane = m_lanes.at(index);
    reload();
}

void SignalPresenter::toggleOnlyMine()
{
    m_onlyMine = !m_onlyMine;
    showChart();
}

void SignalPresenter::reload()
{
    m_app.refreshLanding(m_window, m_lane, std::nullopt);
}

void SignalPresenter::readLibrary()
{
    m_app.prepareOwnedMusic();
    readSignal();
}

void SignalPresenter::readSignal()
{
    if (server() != m_typedServer)
        settleForm();
    readLanes();
    showChart();
}

/// The view starts its list of lanes afresh at each change, so it hears of real ones alone.
void SignalPresenter::readLanes()
{
    const QStringList lanes =
        m_app.hasOwnedMusic() ? m_app.lanes() : QStringList(SignalFigures::everyLane.toString());
    if (lanes == m_lanes)
        return;
    m_lanes = lanes;
    Q_EMIT lanesChanged();
}

/// Decides whether the screen asks for a server.
void SignalPresenter::settleForm()
{
    m_typedServer = server();
    m_asksForServer = m_typedServer.isEmpty();
    m_showsSetup = m_showsSetup && !m_asksForServer;
}

void SignalPresenter::showChart()
{
    // While the keys are being worked out no row bears a mark; the filter can't wait for them.
    const QSet<QString> owned =
        m_onlyMine || m_app.hasOwnedMusic() ? m_app.ownedKeys() : QSet<QString>();
    const QList<LandingTrack> rows =
        m_onlyMine ? SignalFigures::ownedAmong(m_app.landing(), owned) : m_app.landing();
    m_chart.setRows(m_asksForServer ? QList<LandingTrack>() : rows, owned, m_app.playedKeys());
    Q_EMIT changed();
}

void SignalPresenter::save(const SignalConfig &config)
{
    m_app.setSignal(config);
    m_app.saveSignal();
}

} // namespace tarnwick
