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
        app.rescan();
        QCOMPARE(app.pendingTasks(), 0);
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QVERIFY(!app.toast());
    }

    void letsTheLaterOfTwoScansWin()
    {
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QSignalSpy finished(&app, &AppState::scanFinished);
        app.rescan();
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(finished.size(), 2);
        QCOMPARE(app.phase(), AppState::Phase(Ready{}));
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
