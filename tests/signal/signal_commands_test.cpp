// The chart and what goes with it in AppState, against a server with a real pool, and against one
// that fails. Sharing and leaving: signal_sharing_test.

#include "platform/http.h"
#include "support/signal_fixture.h"

#include "support/scripted_server.h"
#include "support/signal_server.h"

using namespace std::chrono_literals;
using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class SignalCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<SignalFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void createsItsSettingsAtTheFirstLaunch();
    void keepsSettingsInMemoryUntilTheyAreSaved();
    void hasNoLanesButAllBeforeAScan();
    void listsTheLanesAndKeysOfTheLibrary();
    void knowsWhatWasPlayedAfterEachScan();
    void fetchesTheChartAndTheTotals();
    void filtersTheChart();
    void fetchesTheChartWithoutTheTotals();
    void keepsAnOldChartUnderAnError();
    void forgetsAnErrorAtTheNextFetch();
    void asksForAServerFirst();
    void isBusyUntilTheAnswerIsIn();
    void needsTheCrewsKey();
    void worksOnWhatItWasStartedWith();
    void outlivesItsAppState();

private:
    std::unique_ptr<SignalFixture> m_fixture;
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
    m_fixture->writeLibraryAndHistory();
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
    m_fixture->writeLibraryAndHistory();
    AppState &app = m_fixture->launchAndScan();
    QCOMPARE(app.playedKeys(),
             (QSet<QString>{keyOf(u"A"_s), keyOf(u"B"_s), keyOf(u"C"_s), keyOf(u"D"_s)}));
    m_fixture->writeSession(u"3.session"_s, {playEntry(u"/e.mp3", u"E", u"Artist")});
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(app.playedKeys().contains(keyOf(u"E"_s)));
    QVERIFY(QFile::remove(m_fixture->home(u"Music/_Serato_/History/Sessions/3.session"_s)));
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!app.playedKeys().contains(keyOf(u"E"_s)));
}

void SignalCommandsTest::fetchesTheChartAndTheTotals()
{
    m_fixture->writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = m_fixture->launchWith(server.url());
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
    AppState &app = m_fixture->launchWith(server.url());
    server.answer(200, "{\"min_djs\":5,\"tracks\":[]}");
    app.refreshLanding(7, u"Deep House"_s, u"New York"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(server.firstLine(),
             QByteArray("GET /landing?window=7&lane=Deep%20House&city=New%20York HTTP/1.1"));
}

void SignalCommandsTest::fetchesTheChartWithoutTheTotals()
{
    ScriptedServer server;
    AppState &app = m_fixture->launchWith(server.url());
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
    AppState &app = m_fixture->launchWith(server.url());
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
    AppState &app = m_fixture->launchWith(server.url());
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
    AppState &app = m_fixture->launchWith({});
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
    AppState &app = m_fixture->launchWith(server.url());
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

void SignalCommandsTest::needsTheCrewsKey()
{
    const SignalServer server(QStringList{u"--key"_s, u"secret"_s});
    AppState &app = m_fixture->launchWith(server.url());
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

void SignalCommandsTest::worksOnWhatItWasStartedWith()
{
    ScriptedServer server;
    server.answer(500);
    AppState &app = m_fixture->launchWith(server.url());
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
    AppState &app = m_fixture->launchWith(server.url());
    app.refreshLanding(30, std::nullopt, std::nullopt);
    QTRY_COMPARE(server.requests().size(), 1);
    m_fixture->launch();
    QTest::qWait(700);
    QVERIFY(!m_fixture->app().landingError());
}

QTEST_GUILESS_MAIN(SignalCommandsTest)
#include "signal_commands_test.moc"
