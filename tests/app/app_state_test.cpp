#include "app/app_state.h"

#include "support/app_fixture.h"
#include "support/running_program.h"

#include <QElapsedTimer>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray anyTrack()
{
    return trackRecord({textRecord("pfil", u"nowhere/a.mp3"), textRecord("tsng", u"A")});
}

} // namespace

class AppStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void startsWithNothingChosen()
    {
        const AppState &app = m_fixture->launch();
        QCOMPARE(app.phase(), AppState::Phase(ChooseLibrary{}));
        QCOMPARE(app.selection(), Screen::LibraryScore);
        QVERIFY(!app.result());
        QVERIFY(!app.derived());
        QVERIFY(!app.toast());
        QVERIFY(!app.isSeratoRunning());
        QVERIFY(app.locations().isEmpty());
    }

    void findsTheLibrariesAtLaunch()
    {
        m_fixture->writeHomeDatabase({});
        m_fixture->writeVolumeDatabase(u"Stick"_s, {});
        QCOMPARE(m_fixture->launch().locations().size(), 2);
    }

    void looksForLibrariesAndSeratoAgainWhenAsked()
    {
        AppState &app = m_fixture->launch();
        m_fixture->writeHomeDatabase({});
        const RunningProgram serato(u"Serato DJ Pro"_s);
        QVERIFY(app.locations().isEmpty());
        QVERIFY(!app.isSeratoRunning());
        app.refreshEnvironment();
        QCOMPARE(app.locations().size(), 1);
        QVERIFY(app.isSeratoRunning());
    }

    void defaultsToTheHomeLibraryEvenWithoutADatabase()
    {
        m_fixture->root().makeFolder(u"home/Music/_Serato_"_s);
        m_fixture->writeVolumeDatabase(u"Stick"_s, {anyTrack()});
        const auto chosen = m_fixture->launch().defaultLocation();
        QVERIFY(chosen);
        QCOMPARE(chosen->folderPath(), m_fixture->home(u"Music/_Serato_"_s));
        QVERIFY(!chosen->hasDatabase);
    }

    void defaultsToTheFirstLibraryWithADatabaseWhereThereIsNoHomeLibrary()
    {
        m_fixture->root().makeFolder(u"volumes/A/_Serato_"_s);
        m_fixture->writeVolumeDatabase(u"B"_s, {});
        m_fixture->writeVolumeDatabase(u"C"_s, {});
        const auto chosen = m_fixture->launch().defaultLocation();
        QVERIFY(chosen);
        QCOMPARE(chosen->volumeName, u"B"_s);
    }

    void hasNoDefaultWithoutAnyDatabase()
    {
        m_fixture->root().makeFolder(u"volumes/A/_Serato_"_s);
        QVERIFY(!m_fixture->launch().defaultLocation());
    }

    void cannotWriteBeforeTheFirstScan() { QVERIFY(!m_fixture->launch().canWrite()); }

    void canWriteAfterAScan()
    {
        m_fixture->writeHomeDatabase({anyTrack()});
        QVERIFY(m_fixture->launchAndScan().canWrite());
    }

    void cannotWriteWhileSeratoWasSeenRunning()
    {
        m_fixture->writeHomeDatabase({anyTrack()});
        AppState &app = m_fixture->launchAndScan();
        const RunningProgram serato(u"Serato DJ"_s);
        app.refreshEnvironment();
        QVERIFY(!app.canWrite());
    }

    void keepsTheFiguresUntilTheLibraryChanges()
    {
        m_fixture->writeHomeDatabase({anyTrack()});
        AppState &app = m_fixture->launchAndScan();
        const auto first = app.derived();
        QCOMPARE(app.derived(), first);
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.derived() != first);
    }

    void replacesAToastByTheNext()
    {
        AppState &app = m_fixture->launch();
        QSignalSpy raised(&app, &AppState::toastRaised);
        app.showToast(u"one"_s);
        const QUuid first = app.toast()->id;
        app.showToast(u"two"_s, Reversible::Yes);
        QCOMPARE(app.toast()->message, u"two"_s);
        QVERIFY(app.toast()->reversible);
        QVERIFY(app.toast()->id != first);
        QCOMPARE(raised.size(), 2);
    }

    void givesEveryToastItsFullLife()
    {
        AppState &app = m_fixture->launch();
        app.showToast(u"one"_s);
        QTest::qWait(1000);
        QElapsedTimer second;
        second.start();
        app.showToast(u"two"_s);
        // The first one's time is up now, the second's is not.
        QTest::qWait(3700);
        QVERIFY(app.toast());
        QCOMPARE(app.toast()->message, u"two"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!app.toast(), 2000);
        QVERIFY2(second.elapsed() >= 4195, qPrintable(QString::number(second.elapsed())));
    }

    void tellsOfASelectionOnlyWhereItChanges()
    {
        AppState &app = m_fixture->launch();
        QSignalSpy changed(&app, &AppState::selectionChanged);
        app.setSelection(Screen::LibraryScore);
        QCOMPARE(changed.size(), 0);
        app.setSelection(Screen::Booth);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(app.selection(), Screen::Booth);
    }

private:
    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(AppStateTest)
#include "app_state_test.moc"
