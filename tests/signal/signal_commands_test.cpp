// What AppState does with Signal, against a server with a real pool, and against one that fails.

#include "app/app_state.h"
#include "platform/clock.h"
#include "platform/http.h"
#include "serato/serato_history.h"
#include "signal/signal_client.h"
#include "support/app_fixture.h"
#include "support/scripted_server.h"
#include "support/session_builder.h"
#include "support/signal_server.h"

using namespace std::chrono_literals;
using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime friday(QDate(2026, 11, 20), QTime(12, 0), Qt::UTC);
const QStringList onThatFriday = {u"--today"_s, u"2026-11-20"_s};
constexpr quint32 day = 86400;

quint32 seconds(const QDateTime &moment)
{
    return quint32(moment.toSecsSinceEpoch());
}

QByteArray track(const QString &path, const QString &title, const QString &genre,
                 const QString &bpm = {})
{
    return trackRecord({textRecord("pfil", path), textRecord("tsng", title),
                        textRecord("tart", u"Artist"), textRecord("tgen", genre),
                        textRecord("tbpm", bpm)});
}

QString keyOf(const QString &title)
{
    return SeratoHistory::trackKey(u"Artist"_s, title);
}

QStringList messagesOf(const QSignalSpy &toasts)
{
    QStringList messages;
    for (const QList<QVariant> &arguments : toasts)
        messages << arguments.first().value<Toast>().message;
    return messages;
}

} // namespace

class SignalCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = std::make_unique<platform::ScopedClock>(friday);
        m_fixture = std::make_unique<AppFixture>();
    }
    void cleanup()
    {
        m_fixture.reset();
        m_clock.reset();
    }

    void createsItsSettingsAtTheFirstLaunch();
    void keepsSettingsInMemoryUntilTheyAreSaved();
    void hasNoLanesButAllBeforeAScan();
    void listsTheLanesAndKeysOfTheLibrary();
    void knowsWhatWasPlayedAfterEachScan();
    void sharesNothingUnlessSharingIsOn();
    void sharesTheWholeHistory();
    void countsRepeatsInWhatItSaysAndNotInThePool();
    void sharesPlaysInTheirLanes();
    void sharesAnEmptyHistoryToo();
    void tellsNoServerWhereMusicLiesOrWhoAsks();
    void fetchesTheChartAndTheTotals();
    void filtersTheChart();
    void fetchesTheChartWithoutTheTotals();
    void keepsAnOldChartUnderAnError();
    void forgetsAnErrorAtTheNextFetch();
    void asksForAServerFirst();
    void isBusyUntilTheAnswerIsIn();
    void tellsWhyPlaysWereNotShared_data();
    void tellsWhyPlaysWereNotShared();
    void leavesThePool();
    void staysInThePoolUntilTheServerHasHeard_data();
    void staysInThePoolUntilTheServerHasHeard();
    void needsTheCrewsKey();
    void contributesAfterEachScanWhereTheEnvironmentAsks_data();
    void contributesAfterEachScanWhereTheEnvironmentAsks();
    void worksOnWhatItWasStartedWith();
    void outlivesItsAppState();

private:
    AppState &launchWith(const QString &url, bool optIn = true)
    {
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        connectTo(app, url, optIn);
        return app;
    }
    static void connectTo(AppState &app, const QString &url, bool optIn = true)
    {
        SignalConfig config = app.signal();
        config.serverUrl = url;
        config.optIn = optIn;
        app.setSignal(config);
        app.saveSignal();
    }
    void writeSession(const QString &name, const QByteArrayList &plays) const
    {
        m_fixture->root().write(u"home/Music/_Serato_/History/Sessions/"_s + name, plays.join());
    }
    /// A library of three tracks, one of them missing, and a history of six plays.
    void writeLibraryAndHistory()
    {
        const QString a = m_fixture->writeAudio(u"a.mp3"_s);
        const QString b = m_fixture->writeAudio(u"b.mp3"_s);
        m_fixture->writeHomeDatabase({track(a, u"A"_s, u"House"_s), track(b, u"B"_s, {}, u"125"_s),
                                      track(u"gone/c.mp3"_s, u"C"_s, u"Techno"_s)});
        const quint32 now = seconds(friday);
        writeSession(u"1.session"_s, {playEntry(QString(u'/' + a), u"A", u"Artist", now),
                                      playEntry(QString(u'/' + a), u"A", u"Artist", now - day),
                                      playEntry(QString(u'/' + b), u"B", u"Artist", now)});
        writeSession(u"2.session"_s,
                     {playEntry(u"/gone/c.mp3", u"C", u"Artist", now),
                      playEntry(u"/elsewhere/d.mp3", u"D", u"Artist", now),
                      playEntry(QString(u'/' + a), u"A", u"Artist", now - 7 * day)});
    }
    /// What the pool holds, by title, as another DJ would see it.
    static QStringList rowsOf(const QString &url, const std::optional<QString> &lane = {})
    {
        const auto tracks = whileServing(
            [&] { return SignalClient::landing({.serverUrl = url}, 30, lane, std::nullopt); });
        QStringList rows;
        for (const LandingTrack &row : tracks.value())
            rows << u"%1 %2"_s.arg(row.title.value_or(QString())).arg(row.plays);
        rows.sort();
        return rows;
    }

    std::unique_ptr<platform::ScopedClock> m_clock;
    std::unique_ptr<AppFixture> m_fixture;
};

void SignalCommandsTest::createsItsSettingsAtTheFirstLaunch()
{
    const SignalConfig config = m_fixture->launch().signal();
    QVERIFY(!config.djHash.isEmpty());
    QVERIFY(!config.optIn);
    QVERIFY(
        m_fixture->root().read(u"data/Tarnwick/signal.json"_s).contains(config.djHash.toUtf8()));
    QCOMPARE(m_fixture->launch().signal(), config);
    const AppState &app = m_fixture->app();
    QVERIFY(app.landing().isEmpty() && app.playedKeys().isEmpty());
    QVERIFY(!app.landingError() && !app.poolStats() && !app.signalBusy());
    QCOMPARE(app.youFeed(), 0);
}

void SignalCommandsTest::keepsSettingsInMemoryUntilTheyAreSaved()
{
    AppState &app = m_fixture->launch();
    QSignalSpy changed(&app, &AppState::signalChanged);
    SignalConfig config = app.signal();
    config.city = u"Detroit"_s;
    app.setSignal(config);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(app.signal().city, u"Detroit"_s);
    QCOMPARE(m_fixture->launch().signal().city, QString());
    m_fixture->app().setSignal(config);
    m_fixture->app().saveSignal();
    QCOMPARE(m_fixture->launch().signal(), config);
}

void SignalCommandsTest::hasNoLanesButAllBeforeAScan()
{
    const AppState &app = m_fixture->launch();
    QCOMPARE(app.lanes(), QStringList{u"All"_s});
    QVERIFY(app.ownedKeys().isEmpty());
}

void SignalCommandsTest::listsTheLanesAndKeysOfTheLibrary()
{
    writeLibraryAndHistory();
    AppState &app = m_fixture->launchAndScan();
    QCOMPARE(app.lanes(), (QStringList{u"All"_s, u"120–130 BPM"_s, u"House"_s}));
    QCOMPARE(app.ownedKeys(), (QSet<QString>{keyOf(u"A"_s), keyOf(u"B"_s)}));
    // They follow the library.
    m_fixture->writeHomeDatabase({});
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.lanes(), QStringList{u"All"_s});
    QVERIFY(app.ownedKeys().isEmpty());
}

void SignalCommandsTest::knowsWhatWasPlayedAfterEachScan()
{
    writeLibraryAndHistory();
    AppState &app = m_fixture->launchAndScan();
    QCOMPARE(app.playedKeys(),
             (QSet<QString>{keyOf(u"A"_s), keyOf(u"B"_s), keyOf(u"C"_s), keyOf(u"D"_s)}));
    writeSession(u"3.session"_s, {playEntry(u"/e.mp3", u"E", u"Artist")});
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(app.playedKeys().contains(keyOf(u"E"_s)));
    QVERIFY(QFile::remove(m_fixture->home(u"Music/_Serato_/History/Sessions/3.session"_s)));
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.playedKeys().contains(keyOf(u"E"_s)));
}

void SignalCommandsTest::sharesNothingUnlessSharingIsOn()
{
    writeLibraryAndHistory();
    ScriptedServer server;
    AppState &app = launchWith(server.url(), false);
    QSignalSpy toasts(&app, &AppState::toastRaised);
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    app.contributePlays();
    QVERIFY(!app.signalBusy());
    QCOMPARE(app.pendingTasks(), 0);
    QCOMPARE(messagesOf(toasts), QStringList{u"Turn on Signal sharing first."_s});
    QVERIFY(!app.toast()->reversible);
    QCOMPARE(server.requests().size(), 0);
}

void SignalCommandsTest::sharesTheWholeHistory()
{
    writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = launchWith(server.url());
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QSignalSpy toasts(&app, &AppState::toastRaised);
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(messagesOf(toasts), QStringList{u"Shared 6 plays — you feed 5 to the pool"_s});
    QVERIFY(!app.toast()->reversible);
    QVERIFY(!app.signalBusy());
    QCOMPARE(app.youFeed(), 5);
    QCOMPARE(rowsOf(server.url()), (QStringList{u"A 2"_s, u"B 1"_s, u"C 1"_s, u"D 1"_s}));
}

void SignalCommandsTest::countsRepeatsInWhatItSaysAndNotInThePool()
{
    writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = launchWith(server.url());
    for (int time = 0; time < 2; ++time) {
        app.contributePlays();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.toast()->message, u"Shared 6 plays — you feed 5 to the pool"_s);
    }
}

void SignalCommandsTest::sharesPlaysInTheirLanes()
{
    writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = launchWith(server.url());
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(rowsOf(server.url(), u"House"_s), QStringList{u"A 2"_s});
    QCOMPARE(rowsOf(server.url(), u"120–130 BPM"_s), QStringList{u"B 1"_s});
    // A missing file has a lane too; what is no track of the library has none.
    QCOMPARE(rowsOf(server.url(), u"Techno"_s), QStringList{u"C 1"_s});
    QCOMPARE(rowsOf(server.url(), u"Unknown"_s), QStringList{u"D 1"_s});
}

void SignalCommandsTest::sharesAnEmptyHistoryToo()
{
    ScriptedServer server;
    server.answer(200, "{\"accepted\":0,\"you_feed\":3}");
    AppState &app = launchWith(server.url());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.toast()->message, u"Shared 0 plays — you feed 3 to the pool"_s);
    QCOMPARE(server.body(), "{\"dj_hash\":\"" + app.signal().djHash.toUtf8() + "\",\"events\":[]}");
}

/// All that goes over the wire in the life of a DJ's Signal, held against what is private.
void SignalCommandsTest::tellsNoServerWhereMusicLiesOrWhoAsks()
{
    writeLibraryAndHistory();
    ScriptedServer server;
    server.answer(200, "{\"min_djs\":5,\"tracks\":[]}");
    server.answer(200, "{\"djs\":1,\"plays\":2,\"tracks\":3}");
    server.answer(200, "{\"accepted\":5,\"you_feed\":5}");
    server.answer(200, "{\"deleted\":5}");
    AppState &app = launchWith(server.url());
    SignalConfig config = app.signal();
    config.city = u"Detroit"_s;
    app.setSignal(config);
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(server.requests().size(), 0);
    app.refreshLanding(30, u"All"_s, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    app.leaveSignal();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(server.requests().size(), 4);
    for (const QByteArray &request : server.requests()) {
        for (const QByteArray word : {"mp3", "home", "elsewhere", "gone", "/tmp"})
            QVERIFY2(!request.contains(word), request.constData());
    }
    // Who only reads is nobody.
    const QByteArray id = config.djHash.toUtf8();
    for (int request = 0; request < 4; ++request)
        QCOMPARE(server.requests().at(request).contains(id), request >= 2);
    QVERIFY(!server.requests().at(0).contains("Detroit"));
    QCOMPARE(server.body(3), "{\"dj_hash\":\"" + id + "\"}");
}

void SignalCommandsTest::fetchesTheChartAndTheTotals()
{
    writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = launchWith(server.url());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    app.refreshLanding(30, u"All"_s, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.landingError());
    QVERIFY(!app.signalBusy());
    QCOMPARE(app.landing().size(), 4);
    const LandingTrack first = app.landing().first();
    QCOMPARE(first.trackKey, keyOf(u"A"_s));
    QCOMPARE(first.title, u"A"_s);
    QCOMPARE(first.artist, u"Artist"_s);
    QCOMPARE(first.djs, 1);
    QCOMPARE(first.plays, 2);
    const SignalClient::PoolStats expected = {.djs = 1, .plays = 5, .tracks = 4};
    QCOMPARE(app.poolStats(), expected);
}

void SignalCommandsTest::filtersTheChart()
{
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    server.answer(200, "{\"min_djs\":5,\"tracks\":[]}");
    app.refreshLanding(7, u"Deep House"_s, u"New York"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(server.firstLine(),
             QByteArray("GET /landing?window=7&lane=Deep%20House&city=New%20York HTTP/1.1"));
}

void SignalCommandsTest::fetchesTheChartWithoutTheTotals()
{
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    const QByteArray chart =
        "{\"min_djs\":5,\"tracks\":[{\"track_key\":\"k\",\"djs\":5,\"plays\":9}]}";
    server.answer(200, chart);
    server.answer(200, "{\"djs\":1,\"plays\":2,\"tracks\":3}");
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(app.poolStats());
    server.answer(200, chart);
    server.answer(500);
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.landing().size(), 1);
    QVERIFY(!app.poolStats());
    QVERIFY(!app.landingError());
    QVERIFY(!app.toast());
}

void SignalCommandsTest::keepsAnOldChartUnderAnError()
{
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    server.answer(200, "{\"min_djs\":5,\"tracks\":[{\"track_key\":\"k\",\"djs\":5,\"plays\":9}]}");
    server.answer(200, "{\"djs\":1,\"plays\":2,\"tracks\":3}");
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    server.answer(500);
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.landingError(), u"Server returned 500."_s);
    QCOMPARE(app.landing().size(), 1);
    QVERIFY(app.poolStats());
    QVERIFY(!app.signalBusy());
    QVERIFY(!app.toast());
    // No totals are asked for once the chart has failed.
    QCOMPARE(server.requests().size(), 3);
}

void SignalCommandsTest::forgetsAnErrorAtTheNextFetch()
{
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    server.answer(500);
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(app.landingError());
    server.answer(200, "{\"min_djs\":5,\"tracks\":[]}");
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(!app.landingError());
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.landingError());
}

void SignalCommandsTest::asksForAServerFirst()
{
    AppState &app = launchWith({});
    app.refreshLanding(30, u"All"_s, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.landingError(), u"Set your Signal server URL first."_s);
    QVERIFY(!app.signalBusy());
    QVERIFY(!app.toast());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.toast()->message, u"Set your Signal server URL first."_s);
    QVERIFY(!app.signalBusy());
    QSignalSpy toasts(&app, &AppState::toastRaised);
    app.leaveSignal();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(messagesOf(toasts), QStringList{u"Set your Signal server URL first."_s});
    QVERIFY(app.signal().optIn);
}

void SignalCommandsTest::isBusyUntilTheAnswerIsIn()
{
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    server.answer(500);
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(app.signalBusy());
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.signalBusy());
    server.answer(500);
    app.contributePlays();
    QVERIFY(app.signalBusy());
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.signalBusy());
    // Leaving is no part of it.
    server.answer(500);
    app.leaveSignal();
    QVERIFY(!app.signalBusy());
    QVERIFY(m_fixture->waitUntilIdle());
}

void SignalCommandsTest::tellsWhyPlaysWereNotShared_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &answer, const QString &message) {
        QTest::newRow(name) << answer << message;
    };
    row("401", ScriptedServer::message(401, {}),
        u"Access key required or incorrect — check the key your crew gave you."_s);
    row("429", ScriptedServer::message(429, {}), u"Too many requests — give it a moment."_s);
    row("204", ScriptedServer::message(204, {}), u"Server returned 204."_s);
    row("bad JSON", ScriptedServer::message(200, "{"), u"The server's answer couldn't be read."_s);
    row("closed", {}, u"Couldn't reach the server: Connection closed"_s);
}

void SignalCommandsTest::tellsWhyPlaysWereNotShared()
{
    QFETCH(QByteArray, answer);
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    server.answer(200, "{\"accepted\":0,\"you_feed\":3}");
    server.answer(answer);
    QSignalSpy toasts(&app, &AppState::toastRaised);
    for (int time = 0; time < 2; ++time) {
        app.contributePlays();
        QVERIFY(m_fixture->waitUntilIdle());
    }
    QCOMPARE(toasts.size(), 2);
    QTEST(app.toast()->message, "message");
    QVERIFY(!app.toast()->reversible);
    QVERIFY(!app.signalBusy());
    QCOMPARE(app.youFeed(), 3);
}

void SignalCommandsTest::leavesThePool()
{
    writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = launchWith(server.url());
    SignalConfig config = app.signal();
    config.city = u"Detroit"_s;
    config.apiKey = u"key"_s;
    app.setSignal(config);
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.youFeed(), 5);
    app.leaveSignal();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.toast()->message, u"Left the pool — 5 of your plays erased"_s);
    QVERIFY(!app.toast()->reversible);
    QCOMPARE(app.youFeed(), 0);
    config.optIn = false;
    QCOMPARE(app.signal(), config);
    QCOMPARE(rowsOf(server.url()), QStringList());
    QCOMPARE(m_fixture->launch().signal(), config);
}

void SignalCommandsTest::staysInThePoolUntilTheServerHasHeard_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    QTest::newRow("401")
        << 401 << u"Access key required or incorrect — check the key your crew gave you."_s;
    QTest::newRow("500") << 500 << u"Server returned 500."_s;
    QTest::newRow("204") << 204 << u"Server returned 204."_s;
}

void SignalCommandsTest::staysInThePoolUntilTheServerHasHeard()
{
    QFETCH(int, status);
    ScriptedServer server;
    AppState &app = launchWith(server.url());
    server.answer(200, "{\"accepted\":0,\"you_feed\":3}");
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    server.answer(status);
    app.leaveSignal();
    QVERIFY(m_fixture->waitUntilIdle());
    QTEST(app.toast()->message, "message");
    QVERIFY(app.signal().optIn);
    QCOMPARE(app.youFeed(), 3);
    QVERIFY(m_fixture->launch().signal().optIn);
}

void SignalCommandsTest::needsTheCrewsKey()
{
    const SignalServer server(QStringList{u"--key"_s, u"secret"_s});
    AppState &app = launchWith(server.url());
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.landingError(),
             u"Access key required or incorrect — check the key your crew gave you."_s);
    SignalConfig config = app.signal();
    config.apiKey = u" secret "_s;
    app.setSignal(config);
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.landingError());
}

void SignalCommandsTest::contributesAfterEachScanWhereTheEnvironmentAsks_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("optIn");
    QTest::addColumn<QStringList>("toasts");
    const QString shared = u"Shared 6 plays — you feed 5 to the pool"_s;
    const QString refused = u"Turn on Signal sharing first."_s;
    QTest::newRow("1") << QByteArray("1") << true << QStringList{shared, shared};
    QTest::newRow("sharing is off") << QByteArray("1") << false << QStringList{refused, refused};
    QTest::newRow("true") << QByteArray("true") << true << QStringList();
    QTest::newRow("01") << QByteArray("01") << true << QStringList();
    QTest::newRow("empty") << QByteArray("") << true << QStringList();
}

void SignalCommandsTest::contributesAfterEachScanWhereTheEnvironmentAsks()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, optIn);
    QFETCH(QStringList, toasts);
    writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    const ScopedVariable variable("TARNWICK_SIGNAL_CONTRIBUTE", value);
    AppState &app = m_fixture->launch();
    connectTo(app, server.url(), optIn);
    QSignalSpy raised(&app, &AppState::toastRaised);
    for (int scan = 0; scan < 2; ++scan) {
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
    }
    QCOMPARE(messagesOf(raised), toasts);
}

void SignalCommandsTest::worksOnWhatItWasStartedWith()
{
    ScriptedServer server;
    server.answer(500);
    AppState &app = launchWith(server.url());
    app.refreshLanding(30, std::nullopt, std::nullopt);
    SignalConfig other = app.signal();
    other.serverUrl = u"http://127.0.0.1:1"_s;
    app.setSignal(other);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.landingError(), u"Server returned 500."_s);
}

void SignalCommandsTest::outlivesItsAppState()
{
    const platform::ScopedHttpPatience little(500ms);
    ScriptedServer server;
    server.keepSilent();
    AppState &app = launchWith(server.url());
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QTRY_COMPARE(server.requests().size(), 1);
    m_fixture->launch();
    QTest::qWait(700);
    QVERIFY(!m_fixture->app().landingError());
}

QTEST_GUILESS_MAIN(SignalCommandsTest)
#include "signal_commands_test.moc"
