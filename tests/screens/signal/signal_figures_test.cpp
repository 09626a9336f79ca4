#include "screens/signal/signal_figures.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class SignalFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePanelSaysWhetherPlaysAreShared()
    {
        QCOMPARE(SignalFigures::shareTitle(true), u"Sharing your plays"_s);
        QCOMPARE(SignalFigures::shareTitle(false), u"Reading only — not sharing"_s);
        QCOMPARE(SignalFigures::shareLine(true, 1234), u"You feed 1234 · you read the full feed"_s);
        QCOMPARE(SignalFigures::shareLine(false, 1234),
                 u"You read public counts only. Turn on to contribute and see everything."_s);
        QCOMPARE(SignalFigures::contributeTitle(false), u"Contribute my plays"_s);
        QCOMPARE(SignalFigures::contributeTitle(true), u"Sharing…"_s);
        QCOMPARE(SignalFigures::pool({.djs = 12, .plays = 99, .tracks = 3456}),
                 u"12 DJs · 3456 tracks in the pool"_s);
    }

    void aServerIsCalledByItsHost_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("host");
        QTest::newRow("name") << u"https://signal.example.org"_s << u"signal.example.org"_s;
        QTest::newRow("port") << u"http://signal.example.org:8080"_s << u"signal.example.org"_s;
        QTest::newRow("path") << u"http://example.org/crew/"_s << u"example.org"_s;
        QTest::newRow("user") << u"http://ash@example.org"_s << u"example.org"_s;
        QTest::newRow("IPv4") << u"http://127.0.0.1:4000"_s << u"127.0.0.1"_s;
        QTest::newRow("IPv6") << u"http://[::1]:4000"_s << u"::1"_s;
        // Asking takes these for addresses; here they are read as they stand.
        QTest::newRow("capitals") << u"https://Signal.Example.ORG/x"_s << u"Signal.Example.ORG"_s;
        QTest::newRow("a blank in the path") << u"https://example.org/my crew"_s << u"server"_s;
        QTest::newRow("no scheme") << u"signal.example.org"_s << u"server"_s;
        QTest::newRow("no scheme, a port") << u"signal.example.org:8080"_s << u"server"_s;
        QTest::newRow("blanks around it") << u"  https://example.org "_s << u"server"_s;
        QTest::newRow("nothing") << QString() << u"server"_s;
        QTest::newRow("no host") << u"http://"_s << u"server"_s;
        QTest::newRow("no address") << u"http://[oh"_s << u"server"_s;
    }
    void aServerIsCalledByItsHost()
    {
        QFETCH(const QString, typed);
        QTEST(SignalFigures::host(typed), "host");
    }

    void filtersAreNamed()
    {
        QStringList windows;
        for (const int days : SignalFigures::windows)
            windows += SignalFigures::windowTitle(days);
        QCOMPARE(windows, QStringList({u"7d"_s, u"30d"_s, u"90d"_s}));
        QCOMPARE(SignalFigures::firstWindow, 30);
        QCOMPARE(SignalFigures::laneTitle(u"All"_s), u"All lanes"_s);
        QCOMPARE(SignalFigures::laneTitle(u"House"_s), u"House"_s);
        QCOMPARE(SignalFigures::laneTitle(u"all"_s), u"all"_s);
    }

    void aRowNamesItsTrack_data()
    {
        using Text = std::optional<QString>;
        QTest::addColumn<Text>("artist");
        QTest::addColumn<Text>("title");
        QTest::addColumn<QString>("line");
        const Text none;
        const Text empty = QString();
        QTest::newRow("both") << Text(u"Ash"_s) << Text(u"Ebb"_s) << u"Ash — Ebb"_s;
        QTest::newRow("no artist") << none << Text(u"Ebb"_s) << u"Ebb"_s;
        QTest::newRow("empty artist") << empty << Text(u"Ebb"_s) << u"Ebb"_s;
        QTest::newRow("no title") << Text(u"Ash"_s) << none << u"Ash — Unknown"_s;
        QTest::newRow("neither") << none << none << u"Unknown"_s;
        QTest::newRow("empty artist, no title") << empty << none << u"Unknown"_s;
        // An empty title is one that the server has told.
        QTest::newRow("empty title") << none << empty << QString();
    }
    void aRowNamesItsTrack()
    {
        QFETCH(const std::optional<QString>, artist);
        QFETCH(const std::optional<QString>, title);
        QTEST(SignalFigures::line({.title = title, .artist = artist}), "line");
    }

    void aRowListsItsLanes()
    {
        const auto lanes = [](const std::optional<QString> &text) {
            return SignalFigures::lanes({.lanes = text});
        };
        QCOMPARE(lanes(u"House"_s), u"House"_s);
        QCOMPARE(lanes(u"House,Techno"_s), u"House · Techno"_s);
        QCOMPARE(lanes(u"House,Techno,120–130 BPM"_s), u"House · Techno · 120–130 BPM"_s);
        QCOMPARE(lanes(u"House, Techno"_s), u"House ·  Techno"_s);
        QCOMPARE(lanes(QString()), QString());
        QCOMPARE(lanes(std::nullopt), QString());
    }

    void aRowCountsDjsAndPlays()
    {
        const LandingTrack track = {.djs = 1, .plays = 12345};
        QCOMPARE(SignalFigures::djs(track), u"1 DJs"_s);
        QCOMPARE(SignalFigures::plays(track), u"12345 plays"_s);
    }

    void ownedRowsKeepTheServersOrder()
    {
        const QList<LandingTrack> chart = {
            {.trackKey = u"c"_s, .djs = 1}, {.trackKey = u"a"_s, .djs = 9}, {.trackKey = u"b"_s}};
        const auto owned = SignalFigures::ownedAmong(chart, {u"b"_s, u"c"_s, u"d"_s});
        QCOMPARE(owned, QList<LandingTrack>({chart.at(0), chart.at(2)}));
        QCOMPARE(SignalFigures::ownedAmong(chart, {}), QList<LandingTrack>());
    }
};

QTEST_APPLESS_MAIN(SignalFiguresTest)
#include "signal_figures_test.moc"
