#include "screens/safety/safety_texts.h"
#include "support/running_program.h"
#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The change log and the screen of libraries in the window, over real libraries on disk.
class SafetyScreensTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsAnEmptyChangeLog()
    {
        QVERIFY(openLog());
        QCOMPARE(
            m_user
                ->textsFrom(u"Everything Tarnwick has done, and how to take it back. No change "
                            "is ever final."_s)
                .sliced(1),
            QStringList(
                {u"0"_s, u"Changes made"_s, u"0"_s, u"In holding · 30 days"_s, u"0"_s,
                 u"Files deleted"_s, u"0"_s, u"Snapshots"_s, u"Changes"_s,
                 u"No library changes yet."_s,
                 u"This build is read-only apart from snapshots. When repairs land, each one "
                 "appears here with a one-click undo and a 30-day window."_s,
                 u"Snapshots"_s,
                 u"No snapshots yet. Take one before any change — it's the whole safety net."_s}));
        QVERIFY(!m_user->button(u"Undo everything"_s));
    }

    void undoesAChange_data() { everyWay(); }
    void undoesAChange()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"gone.mp3"_s);
        QVERIFY(openLog());
        m_user->app().dropFromLibrary(m_user->app().result()->tracks.front());
        QTRY_VERIFY(m_user->button(u"Undo"_s));
        QTRY_VERIFY(!m_user->shows(u"No library changes yet."_s));
        endToast();
        QVERIFY(press(m_user->button(u"Undo"_s), way));
        QTRY_COMPARE(m_user->app().result()->total(), 1);
        QTRY_VERIFY(m_user->shows(u"Undone"_s));
        QVERIFY(m_user->shows(u"Reversed"_s));
    }

    void undoesEverything_data() { everyWay(); }
    void undoesEverything()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"a.mp3"_s);
        m_user->addMissingTrack(u"b.mp3"_s);
        QVERIFY(openLog());
        for (int i = 0; i < 2; ++i)
            m_user->app().dropFromLibrary(ScannedTrack(m_user->app().result()->tracks.front()));
        QTRY_VERIFY(m_user->button(u"Undo everything"_s));
        QVERIFY(m_user->waitForPicture());
        QVERIFY(press(m_user->button(u"Undo everything"_s), way));
        QTRY_COMPARE(m_user->app().result()->total(), 2);
        QTRY_VERIFY(!m_user->button(u"Undo everything"_s));
    }

    void takesASnapshotAndRollsBackToIt_data() { everyWay(); }
    void takesASnapshotAndRollsBackToIt()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"gone.mp3"_s);
        QVERIFY(openLog());
        QVERIFY(press(m_user->button(u"Take snapshot"_s), way));
        QVERIFY(m_user->waitUntilIdle());
        QTRY_VERIFY(m_user->shows(u"Manual snapshot"_s));
        m_user->app().dropFromLibrary(ScannedTrack(m_user->app().result()->tracks.front()));
        QTRY_VERIFY(m_user->shows(u"1"_s));
        QVERIFY(m_user->waitForPicture());
        QVERIFY(press(m_user->button(u"Roll back"_s), way));
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(m_user->app().result()->total(), 1);
    }

    void rollsNothingBackWhileSeratoRuns()
    {
        QVERIFY(openLog());
        m_user->app().takeSnapshot(u"By hand"_s);
        QVERIFY(m_user->waitUntilIdle());
        QTRY_VERIFY(m_user->button(u"Roll back"_s));
        const RunningProgram serato(u"Serato DJ Pro"_s);
        m_user->app().refreshEnvironment();
        QVERIFY(!m_user->button(u"Roll back"_s)->isEnabled());
        QCOMPARE(m_user->button(u"Roll back"_s)->opacity(), 0.5);
    }

    void showsLibrariesStepsAndPromises()
    {
        m_user->writeVolumeDatabase(u"Stick"_s, {});
        QVERIFY(openSafety());
        QStringList expected = {u"Libraries"_s,
                                u"2 found"_s,
                                u"System disk"_s,
                                m_user->home(u"Music/_Serato_"_s),
                                u"Loaded and scanned"_s,
                                u"Loaded"_s,
                                u"Stick"_s,
                                m_user->root().path(u"volumes/Stick/_Serato_"_s),
                                u"Ready to scan"_s,
                                u"Safety steps"_s};
        for (const Safety::Step &step : Safety::steps())
            expected += {step.title, step.detail};
        expected += u"What this app never does"_s;
        expected += Safety::neverDoes();
        expected += u"Serato is closed — safe to work"_s;
        QCOMPARE(m_user
                     ->textsFrom(u"Which Serato library you're working with, and the promises "
                                 "Tarnwick keeps around it."_s)
                     .sliced(1),
                 expected);
    }

    void takesTheFirstSnapshot_data() { everyWay(); }
    void takesTheFirstSnapshot()
    {
        QFETCH(const Way, way);
        QVERIFY(openSafety());
        QVERIFY(press(m_user->button(u"Take snapshot"_s), way));
        QVERIFY(m_user->waitUntilIdle());
        QTRY_VERIFY(m_user->shows(u"1 taken"_s));
        QCOMPARE(m_user->app().snapshots().first().reason, u"First snapshot"_s);
    }

    void scansAnotherLibrary_data() { everyWay(); }
    void scansAnotherLibrary()
    {
        QFETCH(const Way, way);
        m_user->writeVolumeDatabase(u"Stick"_s, {});
        QVERIFY(openSafety());
        QVERIFY(press(m_user->button(u"Scan this"_s), way));
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(m_user->app().result()->location.volumeName, u"Stick"_s);
    }

private:
    bool openLog() { return m_user->openOn(Screen::ChangeLog, u"ChangeLogScreen"_s); }
    bool openSafety() { return m_user->openOn(Screen::LibrarySafety, u"LibrarySafetyScreen"_s); }
    /// The toast bar has a button "Undo" of its own.
    void endToast()
    {
        m_user->app().showToast(u"Done."_s);
        QTRY_VERIFY(m_user->shows(u"Done."_s));
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(SafetyScreensTest)
#include "safety_screens_test.moc"
