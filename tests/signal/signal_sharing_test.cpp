// Sharing plays with a Signal server and leaving it, through AppState.

#include "support/signal_fixture.h"

#include "support/scripted_server.h"
#include "support/signal_server.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class SignalSharingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<SignalFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void sharesNothingUnlessSharingIsOn();
    void sharesTheWholeHistory();
    void countsRepeatsInWhatItSaysAndNotInThePool();
    void sharesPlaysInTheirLanes();
    void sharesAnEmptyHistoryToo();
    void tellsNoServerWhereMusicLiesOrWhoAsks();
    void tellsWhyPlaysWereNotShared_data();
    void tellsWhyPlaysWereNotShared();
    void leavesThePool();
    void staysInThePoolUntilTheServerHasHeard_data();
    void staysInThePoolUntilTheServerHasHeard();
    void contributesAfterEachScanWhereTheEnvironmentAsks_data();
    void contributesAfterEachScanWhereTheEnvironmentAsks();

private:
    std::unique_ptr<SignalFixture> m_fixture;
};

void SignalSharingTest::sharesNothingUnlessSharingIsOn()
{
    m_fixture->writeLibraryAndHistory();
    ScriptedServer server;
    AppState &app = m_fixture->launchWith(server.url(), false);
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

void SignalSharingTest::sharesTheWholeHistory()
{
    m_fixture->writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = m_fixture->launchWith(server.url());
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QSignalSpy toasts(&app, &AppState::toastRaised);
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(messagesOf(toasts), QStringList{u"Shared 6 plays — you feed 5 to the pool"_s});
    QVERIFY(!app.toast()->reversible);
    QVERIFY(!app.signalBusy());
    QCOMPARE(app.youFeed(), 5);
    QCOMPARE(m_fixture->rowsOf(server.url()),
             (QStringList{u"A 2"_s, u"B 1"_s, u"C 1"_s, u"D 1"_s}));
}

void SignalSharingTest::countsRepeatsInWhatItSaysAndNotInThePool()
{
    m_fixture->writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = m_fixture->launchWith(server.url());
    for (int time = 0; time < 2; ++time) {
        app.contributePlays();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.toast()->message, u"Shared 6 plays — you feed 5 to the pool"_s);
    }
}

void SignalSharingTest::sharesPlaysInTheirLanes()
{
    m_fixture->writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = m_fixture->launchWith(server.url());
    app.rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->rowsOf(server.url(), u"House"_s), QStringList{u"A 2"_s});
    QCOMPARE(m_fixture->rowsOf(server.url(), u"120–130 BPM"_s), QStringList{u"B 1"_s});
    // A missing file has a lane too; what is no track of the library has none.
    QCOMPARE(m_fixture->rowsOf(server.url(), u"Techno"_s), QStringList{u"C 1"_s});
    QCOMPARE(m_fixture->rowsOf(server.url(), u"Unknown"_s), QStringList{u"D 1"_s});
}

void SignalSharingTest::sharesAnEmptyHistoryToo()
{
    ScriptedServer server;
    server.answer(200, "{\"accepted\":0,\"you_feed\":3}");
    AppState &app = m_fixture->launchWith(server.url());
    app.contributePlays();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app.toast()->message, u"Shared 0 plays — you feed 3 to the pool"_s);
    QCOMPARE(server.body(), "{\"dj_hash\":\"" + app.signal().djHash.toUtf8() + "\",\"events\":[]}");
}

void SignalSharingTest::tellsNoServerWhereMusicLiesOrWhoAsks()
{
    m_fixture->writeLibraryAndHistory();
    ScriptedServer server;
    server.answer(200, "{\"min_djs\":5,\"tracks\":[]}");
    server.answer(200, "{\"djs\":1,\"plays\":2,\"tracks\":3}");
    server.answer(200, "{\"accepted\":5,\"you_feed\":5}");
    server.answer(200, "{\"deleted\":5}");
    AppState &app = m_fixture->launchWith(server.url());
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

void SignalSharingTest::tellsWhyPlaysWereNotShared_data()
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

void SignalSharingTest::tellsWhyPlaysWereNotShared()
{
    QFETCH(QByteArray, answer);
    ScriptedServer server;
    AppState &app = m_fixture->launchWith(server.url());
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

void SignalSharingTest::leavesThePool()
{
    m_fixture->writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    AppState &app = m_fixture->launchWith(server.url());
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
    QCOMPARE(m_fixture->rowsOf(server.url()), QStringList());
    QCOMPARE(m_fixture->launch().signal(), config);
}

void SignalSharingTest::staysInThePoolUntilTheServerHasHeard_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    QTest::newRow("401")
        << 401 << u"Access key required or incorrect — check the key your crew gave you."_s;
    QTest::newRow("500") << 500 << u"Server returned 500."_s;
    QTest::newRow("204") << 204 << u"Server returned 204."_s;
}

void SignalSharingTest::staysInThePoolUntilTheServerHasHeard()
{
    QFETCH(int, status);
    ScriptedServer server;
    AppState &app = m_fixture->launchWith(server.url());
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

void SignalSharingTest::contributesAfterEachScanWhereTheEnvironmentAsks_data()
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

void SignalSharingTest::contributesAfterEachScanWhereTheEnvironmentAsks()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, optIn);
    QFETCH(QStringList, toasts);
    m_fixture->writeLibraryAndHistory();
    const SignalServer server(onThatFriday);
    const ScopedVariable variable("TARNWICK_SIGNAL_CONTRIBUTE", value);
    AppState &app = m_fixture->launch();
    m_fixture->connectTo(app, server.url(), optIn);
    QSignalSpy raised(&app, &AppState::toastRaised);
    for (int scan = 0; scan < 2; ++scan) {
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
    }
    QCOMPARE(messagesOf(raised), toasts);
}

QTEST_GUILESS_MAIN(SignalSharingTest)
#include "signal_sharing_test.moc"
