#include "screens/gig_run/gig_run_actions.h"

#include "support/command_fixture.h"
#include "support/running_program.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using GigRunActions::Fixes;
using GigRunFigures::Outcome;
using GigRunFigures::Step;

class GigRunActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_user = std::make_unique<CommandFixture>();
        const QByteArrayList copy = {textRecord("tart", u"A"), textRecord("tsng", u"Song")};
        m_user->addTrack(u"small.mp3"_s, copy, QByteArray(10, 'a'));
        m_user->addTrack(u"large.mp3"_s, copy, QByteArray(20, 'a'));
        m_user->addMissingTrack(u"gone.mp3"_s);
    }
    void cleanup() { m_user.reset(); }

    void aRunWithoutFixesWritesNothing()
    {
        AppState &app = m_user->start();
        QCOMPARE(run(app, Step::Dedupe, Fixes::No),
                 Outcome(GigRunFigures::StepSkipped{u"1 dupe groups"_s}));
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    void aRunWithFixesHoldsDuplicates()
    {
        AppState &app = m_user->start();
        QCOMPARE(run(app, Step::Dedupe, Fixes::Yes),
                 Outcome(GigRunFigures::StepDone{u"Held 1 duplicate copies"_s}));
        QCOMPARE(app.heldItems().size(), 1);
        QVERIFY(app.derived()->duplicateGroups.empty());
    }

    void levellingGoesThroughItsCommandAndCountsAsDone()
    {
        AppState &app = m_user->start();
        std::vector<ScannedTrack> tracks = app.result()->tracks;
        tracks[0].autogain = 3;
        tracks[1].autogain = -3;
        tracks[0].hasGain = tracks[1].hasGain = true;
        const Derived derived(std::make_shared<ScanResult>(ScanResult{{}, {}, tracks}));
        // The files bear no tags to write into: the toasts say so, the step does not.
        QCOMPARE(GigRunActions::runStep(app, Step::Level, derived, Fixes::Yes),
                 Outcome(GigRunFigures::StepDone{u"Levelled 2 tracks (tags)"_s}));
        QCOMPARE(m_user->toasts().last(), u"Levelled 0 tracks — tags only [Undo]"_s);
    }

    void nothingToLevelCallsNothing()
    {
        AppState &app = m_user->start();
        QCOMPARE(run(app, Step::Level, Fixes::Yes),
                 Outcome(GigRunFigures::StepDone{u"Levels even"_s}));
        QVERIFY(m_user->toasts().isEmpty());
    }

    void nothingIsEverRelinked()
    {
        AppState &app = m_user->start();
        QCOMPARE(run(app, Step::Relink, Fixes::Yes),
                 Outcome(GigRunFigures::StepSkipped{u"1 need relinking"_s}));
        QVERIFY(m_user->toasts().isEmpty());
    }

    void fixesAreSkippedWhileSeratoRuns()
    {
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        QCOMPARE(run(app, Step::Dedupe, Fixes::Yes),
                 Outcome(GigRunFigures::StepSkipped{u"1 dupe groups"_s}));
        QVERIFY(m_user->toasts().isEmpty());
    }

private:
    static Outcome run(AppState &app, Step step, Fixes fixes)
    {
        const auto derived = app.derived();
        return GigRunActions::runStep(app, step, *derived, fixes);
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(GigRunActionsTest)
#include "gig_run_actions_test.moc"
