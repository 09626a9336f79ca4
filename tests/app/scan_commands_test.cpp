// The road of a scan through AppState, over real libraries on disk.

#include "app/app_state.h"

#include "support/app_fixture.h"
#include "support/running_program.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray track(const QString &path)
{
    return trackRecord({textRecord("pfil", path), textRecord("tsng", path)});
}

} // namespace

class ScanCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void scansAtLaunchOnlyForExactlyOne_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("scans");
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("true") << QByteArray("true") << false;
        QTest::newRow("01") << QByteArray("01") << false;
        QTest::newRow("blank ahead") << QByteArray(" 1") << false;
        QTest::newRow("blank behind") << QByteArray("1 ") << false;
        QTest::newRow("empty") << QByteArray("") << false;
    }
    void scansAtLaunchOnlyForExactlyOne()
    {
        QFETCH(QByteArray, value);
        QFETCH(bool, scans);
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        const ScopedVariable variable("TARNWICK_AUTOSCAN", value);
        AppState &app = m_fixture->launch();
        QCOMPARE(std::holds_alternative<Scanning>(app.phase()), scans);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(bool(app.result()), scans);
    }

    void doesNotScanAtLaunchWithoutALibrary()
    {
        const ScopedVariable variable("TARNWICK_AUTOSCAN", "1");
        AppState &app = m_fixture->launch();
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QVERIFY(!app.toast());
    }

    void scansOnItsOwnAtLaunchAlone()
    {
        const ScopedVariable variable("TARNWICK_AUTOSCAN", "1");
        AppState &app = m_fixture->launch();
        QVERIFY(m_fixture->waitUntilIdle());
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        app.refreshEnvironment();
        QVERIFY(app.defaultLocation());
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QCOMPARE(app.pendingTasks(), 0);
    }

    void leavesTheVariablesAloneWhereTheyAreToBeIgnored()
    {
        m_fixture->writeHomeDatabase({});
        const ScopedVariable autoscan("TARNWICK_AUTOSCAN", "1");
        const ScopedVariable screen("TARNWICK_SCREEN", "hygiene");
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.selection(), Screen::LibraryScore);
    }

    void goesThroughScanningToReady()
    {
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        app.startScan(*app.defaultLocation());
        QCOMPARE(app.phase(), AppState::Phase(Scanning{ScanProgress{}}));
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.phase(), AppState::Phase(Ready{}));
        QCOMPARE(app.result()->total(), 1);
        QCOMPARE(app.derived()->total, 1);
    }

    void readsTheTagsOfTheFiles()
    {
        const QByteArray tag = hex("494433 0300 00 0000000F") + "Serato Markers2";
        m_fixture->writeHomeDatabase({track(m_fixture->writeAudio(u"a.mp3"_s, tag))});
        AppState &app = m_fixture->launchAndScan();
        QVERIFY(app.result()->tracks.front().hasMarkers);
        app.startScan(*app.defaultLocation(), LibraryScanner::ReadTags::No);
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!app.result()->tracks.front().tagsRead);
    }

    void tellsOfTheResultThenOfThePhaseThenOfTheSelection()
    {
        m_fixture->writeHomeDatabase({});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        app.setSelection(Screen::Booth);
        QStringList told;
        const auto tell = [&](const QString &change) {
            if (app.result())
                told.append(change);
        };
        connect(&app, &AppState::selectionChanged, &app, [&] { tell(u"selection"_s); });
        connect(&app, &AppState::phaseChanged, &app, [&] { tell(u"phase"_s); });
        connect(&app, &AppState::libraryChanged, &app, [&] { tell(u"library"_s); });
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(told, QStringList({u"library"_s, u"phase"_s, u"selection"_s}));
    }

    void keepsTheEarlierResultWhileItScansAgain()
    {
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launchAndScan();
        const auto earlier = app.result();
        m_fixture->writeHomeDatabase({});
        app.rescan();
        QVERIFY(std::holds_alternative<Scanning>(app.phase()));
        QCOMPARE(app.result(), earlier);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.result()->total(), 0);
    }

    void reportsProgressInOrder()
    {
        QByteArrayList tracks;
        for (int i = 0; i < 60; ++i)
            tracks.append(track(u"nowhere/%1.mp3"_s.arg(i)));
        m_fixture->writeHomeDatabase(tracks);
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QStringList reports;
        connect(&app, &AppState::progressReported, &app, [&](const ScanProgress &progress) {
            reports.append(
                u"%1 %2/%3"_s.arg(progress.phase).arg(progress.processed).arg(progress.total));
        });
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        const QStringList expected = {
            u"Reading database… 0/0"_s,          u"Checking files and cues… 0/60"_s,
            u"Checking files and cues… 25/60"_s, u"Checking files and cues… 50/60"_s,
            u"Checking files and cues… 60/60"_s, u"Scoring… 60/60"_s,
        };
        QCOMPARE(reports, expected);
    }

    void returnsToTheScoreAfterEveryScan()
    {
        m_fixture->writeHomeDatabase({});
        AppState &app = m_fixture->launchAndScan();
        app.setSelection(Screen::Booth);
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.selection(), Screen::LibraryScore);
    }

    void opensTheScreenThatTheEnvironmentNames_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<Screen>("expected");
        QTest::newRow("a raw value") << QByteArray("hygiene") << Screen::Hygiene;
        QTest::newRow("one not built yet") << QByteArray("stems") << Screen::Stems;
        QTest::newRow("upper case") << QByteArray("Hygiene") << Screen::LibraryScore;
        QTest::newRow("unknown") << QByteArray("kitchen") << Screen::LibraryScore;
        QTest::newRow("empty") << QByteArray("") << Screen::LibraryScore;
    }
    void opensTheScreenThatTheEnvironmentNames()
    {
        QFETCH(QByteArray, value);
        QFETCH(Screen, expected);
        m_fixture->writeHomeDatabase({});
        const ScopedVariable variable("TARNWICK_SCREEN", value);
        AppState &app = m_fixture->launch();
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.selection(), expected);
    }

    void readsTheWantedScreenAnewAfterEachScan()
    {
        m_fixture->writeHomeDatabase({});
        AppState &app = m_fixture->launch();
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.selection(), Screen::LibraryScore);
        const ScopedVariable variable("TARNWICK_SCREEN", "export");
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.selection(), Screen::Export);
    }

    void endsInAToastWhereTheDatabaseCannotBeRead()
    {
        m_fixture->root().makeFolder(u"home/Music/_Serato_"_s);
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QVERIFY(app.toast());
        QCOMPARE(app.toast()->message,
                 u"Couldn't read that library: The file “database V2” couldn't be opened: No such "
                 "file or directory."_s);
        QVERIFY(!app.toast()->reversible);
    }

    void endsWellWhereTheDatabaseIsDamaged()
    {
        m_fixture->root().write(u"home/Music/_Serato_/database V2"_s,
                                track(u"nowhere/a.mp3"_s) + hex("6F74726B FFFFFFFF 00"));
        AppState &app = m_fixture->launchAndScan();
        QCOMPARE(app.phase(), AppState::Phase(Ready{}));
        QCOMPARE(app.result()->total(), 1);
        QVERIFY(!app.toast());
    }

    void keepsTheEarlierResultWhenARescanFails()
    {
        const QString database = m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launchAndScan();
        app.setSelection(Screen::Booth);
        QVERIFY(QFile::remove(database));
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QCOMPARE(app.result()->total(), 1);
        QCOMPARE(app.selection(), Screen::Booth);
        QVERIFY(app.canWrite());
    }

    void rescansThePresentLibraryNotTheDefaultOne()
    {
        m_fixture->writeHomeDatabase({});
        m_fixture->writeVolumeDatabase(u"Stick"_s, {track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        for (const SeratoLibrary::Location &location : app.locations()) {
            if (location.volumeName == u"Stick"_s)
                app.startScan(location);
        }
        QVERIFY(m_fixture->waitUntilIdle());
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.result()->location.volumeName, u"Stick"_s);
    }

    void doesNothingOnRescanWithoutAnyLibrary()
    {
        AppState &app = m_fixture->launch();
        QVERIFY(m_fixture->waitUntilIdle()); // the stores are read in the background
        app.rescan();
        QCOMPARE(app.pendingTasks(), 0);
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QVERIFY(!app.toast());
    }

    void doesNotLookForLibrariesOnRescan()
    {
        AppState &app = m_fixture->launch();
        QVERIFY(m_fixture->waitUntilIdle()); // the stores are read in the background
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        app.rescan();
        QVERIFY(app.locations().isEmpty());
        QCOMPARE(app.pendingTasks(), 0);
    }

    void letsTheLaterEndOfTwoScansWinAndDropsReportsBehindTheFirst()
    {
        QByteArrayList many;
        for (int i = 0; i < 20000; ++i)
            many.append(track(u"nowhere/%1.mp3"_s.arg(i)));
        m_fixture->writeVolumeDatabase(u"Large"_s, many);
        m_fixture->writeVolumeDatabase(u"Small"_s, {track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QStringList ended;
        bool cameBack = false;
        connect(&app, &AppState::scanFinished, &app,
                [&] { ended.append(app.result()->location.volumeName); });
        connect(&app, &AppState::phaseChanged, &app, [&] {
            cameBack |= !ended.isEmpty() && std::holds_alternative<Scanning>(app.phase());
        });
        const QList<SeratoLibrary::Location> libraries = app.locations();
        for (const SeratoLibrary::Location &location : libraries)
            app.startScan(location);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(QSet<QString>(ended.begin(), ended.end()),
                 QSet<QString>({u"Large"_s, u"Small"_s}));
        QCOMPARE(app.result()->location.volumeName, ended.last());
        QCOMPARE(app.phase(), AppState::Phase(Ready{}));
        QVERIFY(!cameBack);
    }

    void survivesTheEndOfAppStateDuringAScan()
    {
        QByteArrayList tracks;
        for (int i = 0; i < 5000; ++i)
            tracks.append(track(u"nowhere/%1.mp3"_s.arg(i)));
        m_fixture->writeHomeDatabase(tracks);
        m_fixture->launch(AppState::Environment::Ignored).rescan();
        m_fixture->launch(AppState::Environment::Ignored);
        QTest::qWait(200);
        QVERIFY(!m_fixture->app().result());
    }

    void scansWhileSeratoRuns()
    {
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        const RunningProgram serato(u"Serato DJ Lite"_s);
        AppState &app = m_fixture->launchAndScan();
        QVERIFY(app.isSeratoRunning());
        QCOMPARE(app.result()->total(), 1);
        QVERIFY(!app.canWrite());
    }

private:
    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(ScanCommandsTest)
#include "scan_commands_test.moc"
