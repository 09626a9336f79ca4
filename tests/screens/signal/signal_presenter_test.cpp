// What the screen of Signal shows and does, against servers that say what a test wrote down.
// Against one with a real pool, through the window: signal_screen_test and signal_controls_test.

#include "screens/signal/signal_presenter.h"

#include "support/signal_fixture.h"

#include <QAbstractItemModelTester>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QByteArray stats = "{\"djs\":12,\"plays\":99,\"tracks\":34}";

/// A chart of these titles, of which "A" and the like are the fixture's tracks.
QByteArray chartOf(const QStringList &titles)
{
    QStringList rows;
    for (const QString &title : titles)
        rows += u"{\"track_key\":\"%1\",\"title\":\"%2\",\"djs\":5,\"plays\":7}"_s.arg(keyOf(title),
                                                                                       title);
    return "{\"min_djs\":5,\"tracks\":[" + rows.join(u',').toUtf8() + "]}";
}

} // namespace

class SignalPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<ScriptedServer>();
        m_fixture = std::make_unique<SignalFixture>();
    }
    void cleanup()
    {
        m_fixture.reset();
        m_server.reset();
    }

    void asksForAServerFirst()
    {
        SignalPresenter presenter(m_fixture->launchWith({}, false));
        QVERIFY(presenter.asksForServer());
        QVERIFY(!presenter.busy());
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!m_fixture->app().landingError());
    }

    void fetchesTheChartWhereThereIsAServer()
    {
        answer({u"A"_s, u"B"_s});
        SignalPresenter presenter(m_fixture->launchWith(m_server->url()));
        const QAbstractItemModelTester tester(presenter.chart());
        QVERIFY(!presenter.asksForServer());
        QVERIFY(presenter.busy());
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!presenter.busy());
        QCOMPARE(m_server->firstLine(), QByteArray("GET /landing?window=30 HTTP/1.1"));
        QCOMPARE(column(presenter, ChartModel::LineRole), QStringList({u"A"_s, u"B"_s}));
        QCOMPARE(presenter.pool(), u"12 DJs · 34 tracks in the pool"_s);
        QCOMPARE(presenter.error(), QString());
    }

    void showsTheLastChartAtOnceWhenItComesBack()
    {
        answer({u"A"_s});
        AppState &app = m_fixture->launchWith(m_server->url());
        auto first = std::make_unique<SignalPresenter>(app);
        QVERIFY(m_fixture->waitUntilIdle());
        first->chooseWindow(0);
        first.reset();
        QVERIFY(m_fixture->waitUntilIdle());
        m_server->keepSilent();
        SignalPresenter second(app);
        QCOMPARE(column(second, ChartModel::LineRole), QStringList({u"A"_s}));
        QVERIFY(second.busy());
        // What was chosen before is forgotten with the screen.
        QCOMPARE(second.window(), 1);
    }

    void asksForWhatIsChosen()
    {
        m_fixture->writeLibraryAndHistory();
        for (int request = 0; request < 5; ++request)
            m_server->answer(500);
        AppState &app = scanned();
        // A city is told of the user's plays, and never asked for.
        SignalConfig config = app.signal();
        config.city = u"Leeds"_s;
        app.setSignal(config);
        SignalPresenter presenter(app);
        QCOMPARE(presenter.windows(), QStringList({u"7d"_s, u"30d"_s, u"90d"_s}));
        QCOMPARE(presenter.window(), 1);
        QCOMPARE(presenter.laneTitle(), u"All lanes"_s);
        QCOMPARE(presenter.lanes(), QStringList({u"All"_s, u"120–130 BPM"_s, u"House"_s}));
        QCOMPARE(presenter.lane(), 0);
        presenter.chooseWindow(0);
        QCOMPARE(presenter.window(), 0);
        presenter.chooseLane(2);
        QCOMPARE(presenter.lane(), 2);
        QCOMPARE(presenter.laneTitle(), u"House"_s);
        presenter.chooseWindow(2);
        presenter.chooseLane(0);
        QVERIFY(m_fixture->waitUntilIdle());
        QByteArrayList asked;
        for (const QByteArray &request : m_server->requests())
            asked += request.split(' ').value(1);
        // They go out at the same time, so they may come in in any order.
        std::sort(asked.begin(), asked.end());
        QCOMPARE(asked, QByteArrayList({"/landing?window=30", "/landing?window=7",
                                        "/landing?window=7&lane=House", "/landing?window=90",
                                        "/landing?window=90&lane=House"}));
    }

    void ofTwoFetchesTheOneThatEndsLastCounts()
    {
        AppState &app = m_fixture->launchWith(m_server->url());
        m_server->drip(ScriptedServer::message(200, chartOf({u"slow"_s})), 10,
                       std::chrono::milliseconds(60));
        SignalPresenter presenter(app);
        QTRY_COMPARE(m_server->requests().size(), 1);
        answer({u"quick"_s});
        m_server->answer(200, stats);
        presenter.chooseWindow(0);
        QTRY_COMPARE(column(presenter, ChartModel::LineRole), QStringList({u"quick"_s}));
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(column(presenter, ChartModel::LineRole), QStringList({u"slow"_s}));
    }

    void filtersWhatIsHereWithoutAsking()
    {
        m_fixture->writeLibraryAndHistory();
        answer({u"D"_s, u"A"_s, u"other"_s, u"B"_s});
        SignalPresenter presenter(scanned());
        QVERIFY(m_fixture->waitUntilIdle());
        const auto asked = m_server->requests().size();
        presenter.toggleOnlyMine();
        QVERIFY(presenter.onlyMine());
        QCOMPARE(column(presenter, ChartModel::LineRole), QStringList({u"A"_s, u"B"_s}));
        QCOMPARE(column(presenter, ChartModel::RankRole), QStringList({u"1"_s, u"2"_s}));
        presenter.toggleOnlyMine();
        QCOMPARE(presenter.chart()->rowCount(), 4);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(m_server->requests().size(), asked);
    }

    void isEmptyWhereNothingShownMatches()
    {
        m_fixture->writeLibraryAndHistory();
        answer({u"other"_s});
        SignalPresenter presenter(scanned());
        QVERIFY(!presenter.isEmpty());
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!presenter.isEmpty());
        presenter.toggleOnlyMine();
        QVERIFY(presenter.isEmpty());
    }

    void marksFollowTheLibrary()
    {
        const QString a = m_fixture->writeAudio(u"a.mp3"_s);
        m_fixture->writeHomeDatabase({track(a, u"A"_s, u"House"_s)});
        answer({u"A"_s});
        AppState &app = scanned();
        SignalPresenter presenter(app);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(column(presenter, ChartModel::MarkedRole), QStringList({u"true"_s}));
        QCOMPARE(presenter.lanes(), QStringList({u"All"_s, u"House"_s}));
        QSignalSpy lanes(&presenter, &SignalPresenter::lanesChanged);
        app.setGenre(app.result()->tracks.front(), u"Techno"_s);
        // They are worked out anew behind the screen's back.
        QVERIFY(!app.hasOwnedMusic());
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.hasOwnedMusic());
        QCOMPARE(presenter.lanes(), QStringList({u"All"_s, u"Techno"_s}));
        QCOMPARE(column(presenter, ChartModel::MarkedRole), QStringList({u"true"_s}));
        QCOMPARE(lanes.size(), 2);
        app.dropFromLibrary(ScannedTrack(app.result()->tracks.front()));
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(column(presenter, ChartModel::MarkedRole), QStringList({u"false"_s}));
    }

    void theFilterWaitsForNothing()
    {
        const QString a = m_fixture->writeAudio(u"a.mp3"_s);
        m_fixture->writeHomeDatabase({track(a, u"A"_s, u"House"_s)});
        answer({u"A"_s, u"B"_s});
        AppState &app = scanned();
        SignalPresenter presenter(app);
        QVERIFY(m_fixture->waitUntilIdle());
        app.setGenre(app.result()->tracks.front(), u"Techno"_s);
        QVERIFY(!app.hasOwnedMusic());
        presenter.toggleOnlyMine();
        QCOMPARE(column(presenter, ChartModel::LineRole), QStringList({u"A"_s}));
        QVERIFY(m_fixture->waitUntilIdle());
    }

    void keepsTheServersAddressInMemoryUntilItConnects()
    {
        AppState &app = m_fixture->launchWith({}, false);
        SignalPresenter presenter(app);
        presenter.setServer(u"h"_s);
        QCOMPARE(app.signal().serverUrl, u"h"_s);
        QCOMPARE(saved(u"serverURL"_s), QString());
        // The field stays under the typist's hands.
        QVERIFY(presenter.asksForServer());
        presenter.setServer(m_server->url());
        QVERIFY(presenter.asksForServer());
        QVERIFY(!presenter.busy());
        answer({u"A"_s});
        presenter.connectToServer();
        QVERIFY(!presenter.asksForServer());
        QCOMPARE(saved(u"serverURL"_s), m_server->url());
        QCOMPARE(presenter.host(), u"127.0.0.1"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(m_server->firstLine(), QByteArray("GET /landing?window=30 HTTP/1.1"));
    }

    void asksForAServerAgainOnceTheSetupHasClosedWithoutOne()
    {
        AppState &app = m_fixture->launchWith(m_server->url());
        answer({u"A"_s});
        SignalPresenter presenter(app);
        QVERIFY(m_fixture->waitUntilIdle());
        presenter.toggleSetup();
        QVERIFY(presenter.showsSetup());
        presenter.setServer({});
        QVERIFY(!presenter.asksForServer());
        presenter.toggleSetup();
        QVERIFY(!presenter.showsSetup());
        QVERIFY(presenter.asksForServer());
        QCOMPARE(presenter.chart()->rowCount(), 0);
    }

    void asksForAServerAsSoonAsSomethingElseTakesItAway()
    {
        AppState &app = m_fixture->launchWith(m_server->url());
        SignalPresenter presenter(app);
        presenter.toggleSetup();
        SignalFixture::connectTo(app, {});
        QVERIFY(presenter.asksForServer());
        QVERIFY(!presenter.showsSetup());
        SignalFixture::connectTo(app, m_server->url());
        QVERIFY(!presenter.asksForServer());
        QVERIFY(m_fixture->waitUntilIdle());
    }

    void connectingToNothingSaysSoInTheErrorAlone()
    {
        AppState &app = m_fixture->launchWith({}, false);
        SignalPresenter presenter(app);
        presenter.connectToServer();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(presenter.asksForServer());
        QCOMPARE(presenter.error(), u"Set your Signal server URL first."_s);
        QVERIFY(!app.toast());
    }

    void savesEachOtherSettingAtOnce()
    {
        SignalPresenter presenter(m_fixture->launchWith(m_server->url(), false));
        presenter.setApiKey(u"sesame"_s);
        QCOMPARE(saved(u"apiKey"_s), u"sesame"_s);
        presenter.setCity(u"Detroit"_s);
        QCOMPARE(saved(u"city"_s), u"Detroit"_s);
        presenter.toggleSharing();
        QCOMPARE(saved(u"optIn"_s), u"true"_s);
        presenter.toggleSharing();
        QCOMPARE(saved(u"optIn"_s), u"false"_s);
        QVERIFY(m_fixture->waitUntilIdle());
    }

    void dressesThePanelByWhetherPlaysAreShared()
    {
        SignalPresenter presenter(m_fixture->launchWith(m_server->url(), false));
        QCOMPARE(presenter.shareSymbol(), u"wifi.slash"_s);
        QCOMPARE(presenter.shareTint(), Tint::Neutral);
        QCOMPARE(presenter.shareTitle(), u"Reading only — not sharing"_s);
        presenter.toggleSharing();
        QCOMPARE(presenter.shareSymbol(), u"dot.radiowaves.left.and.right"_s);
        QCOMPARE(presenter.shareTint(), Tint::Accent);
        QCOMPARE(presenter.shareTitle(), u"Sharing your plays"_s);
        QCOMPARE(presenter.shareLine(), u"You feed 0 · you read the full feed"_s);
        QVERIFY(m_fixture->waitUntilIdle());
    }

    void sharesAndLeaves()
    {
        AppState &app = m_fixture->launchWith(m_server->url());
        answer({});
        SignalPresenter presenter(app);
        QCOMPARE(presenter.contributeTitle(), u"Sharing…"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(presenter.contributeTitle(), u"Contribute my plays"_s);
        m_server->answer(200, "{\"accepted\":0,\"you_feed\":3}");
        presenter.contribute();
        QCOMPARE(presenter.contributeTitle(), u"Sharing…"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(presenter.shareLine(), u"You feed 3 · you read the full feed"_s);
        m_server->answer(200, "{\"deleted\":3}");
        presenter.leave();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!presenter.sharing());
        QCOMPARE(app.toast()->message, u"Left the pool — 3 of your plays erased"_s);
    }

    void aReplyMayComeAfterTheScreenHasGone()
    {
        AppState &app = m_fixture->launchWith(m_server->url());
        m_server->drip(ScriptedServer::message(200, chartOf({u"late"_s})), 5,
                       std::chrono::milliseconds(40));
        m_server->answer(200, stats);
        auto presenter = std::make_unique<SignalPresenter>(app);
        QTRY_COMPARE(m_server->requests().size(), 1);
        presenter.reset();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.landing().size(), 1);
    }

private:
    void answer(const QStringList &titles)
    {
        m_server->answer(200, chartOf(titles));
        m_server->answer(200, stats);
    }
    AppState &scanned()
    {
        AppState &app = m_fixture->launchWith(m_server->url());
        app.rescan();
        m_fixture->waitUntilIdle();
        return app;
    }
    /// A setting as it stands on disk.
    QString saved(const QString &key) const
    {
        const auto json =
            QJsonDocument::fromJson(m_fixture->root().read(u"data/Tarnwick/signal.json"_s));
        return json.object().value(key).toVariant().toString();
    }
    static QStringList column(SignalPresenter &presenter, int role)
    {
        QStringList cells;
        for (int row = 0; row < presenter.chart()->rowCount(); ++row)
            cells += presenter.chart()->index(row, 0).data(role).toString();
        return cells;
    }

    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<SignalFixture> m_fixture;
};

QTEST_GUILESS_MAIN(SignalPresenterTest)
#include "signal_presenter_test.moc"
