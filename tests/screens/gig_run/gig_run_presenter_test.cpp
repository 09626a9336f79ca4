#include "screens/gig_run/gig_run_presenter.h"

#include "platform/pause.h"
#include "screens/components/tint.h"
#include "support/command_fixture.h"
#include "support/gig_library.h"
#include "support/running_program.h"

#include <QAbstractItemModelTester>

using namespace std::chrono_literals;
using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QStringList column(GigRunPresenter &presenter, int role)
{
    QStringList cells;
    for (int row = 0; row < presenter.steps()->rowCount(); ++row)
        cells += presenter.steps()->index(row).data(role).toString();
    return cells;
}

QStringList statuses(GigRunPresenter &presenter)
{
    return column(presenter, RunStepModel::StatusRole);
}

QStringList waiting(int steps)
{
    return QStringList(steps, u"Waiting"_s);
}

} // namespace

/// A library with a bit of everything: two copies of a song, a pair of uneven tracks, a missing
/// one.
class GigRunPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_user = std::make_unique<CommandFixture>();
        m_pauses = std::make_unique<platform::ScopedPauses>();
        const QByteArrayList copy = {textRecord("tart", u"A"), textRecord("tsng", u"Song"),
                                     textRecord("tlen", u"40:00"), textRecord("tbpm", u"124.9")};
        m_user->addTrack(u"large.mp3"_s, copy, preparedFile() + QByteArray(100, 'a'));
        m_user->addTrack(u"small.mp3"_s, copy, preparedFile());
        m_loud = m_user->addTrack(u"loud.mp3"_s, preparedFields(u"Loud"_s), preparedFile("3.0"));
        m_user->addTrack(u"quiet.mp3"_s, preparedFields(u"Quiet"_s), preparedFile("-3.0"));
        m_user->addMissingTrack(u"gone.mp3"_s);
        writeHomeCrate(m_user->root(), u"Set"_s, {m_loud});
    }
    void cleanup()
    {
        m_pauses.reset();
        m_user.reset();
    }

    void showsNothingWithoutALibrary()
    {
        GigRunPresenter presenter(m_user->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLibrary());
        presenter.start();
        QVERIFY(!presenter.isRunning());
        QVERIFY(m_pauses->underWay().isEmpty());
    }

    void beginsWithAllStepsToCome()
    {
        GigRunPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.steps());
        QVERIFY(presenter.hasLibrary());
        QCOMPARE(presenter.summary(), u"5 tracks · 1 crates"_s);
        QCOMPARE(presenter.runTitle(), u"Run gig prep"_s);
        QVERIFY(!presenter.applyFixes());
        QVERIFY(!presenter.isRunning());
        QVERIFY(!presenter.hasSheet());
        QCOMPARE(column(presenter, RunStepModel::TitleRole), GigRunFigures::titles());
        QCOMPARE(column(presenter, RunStepModel::NumberRole),
                 QString(u"1 2 3 4 5 6 7 8"_s).split(u' '));
        QCOMPARE(statuses(presenter), waiting(8));
        QCOMPARE(column(presenter, RunStepModel::SymbolRole), QStringList(8, u""_s));
        QCOMPARE(tint(presenter, 0), Tint::Neutral);
    }

    void goesThroughTheStepsOneByOneWithAPauseInEach()
    {
        GigRunPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.steps());
        const QStringList ends = {u"1 need relinking"_s,
                                  u"Every track gridded"_s,
                                  u"3 without a key"_s,
                                  u"2 off by ≥1.5 dB"_s,
                                  u"1 dupe groups"_s,
                                  u"Stems arrive in a later phase"_s,
                                  u"Engine export arrives in Phase 5"_s,
                                  u"Set sheet ready"_s};
        presenter.start();
        for (int step = 0; step < 8; ++step) {
            QVERIFY(presenter.isRunning());
            QCOMPARE(presenter.runTitle(), u"Running…"_s);
            QVERIFY(!presenter.hasSheet());
            QCOMPARE(statuses(presenter),
                     ends.first(step) + QStringList{u"Working…"_s} + waiting(7 - step));
            QCOMPARE(tint(presenter, step), Tint::Accent);
            QCOMPARE(m_pauses->underWay(), QList<std::chrono::milliseconds>{380ms});
            QVERIFY(m_pauses->endNext());
        }
        QCOMPARE(statuses(presenter), ends);
        QCOMPARE(tint(presenter, 0), Tint::Warn);
        QCOMPARE(tint(presenter, 1), Tint::Good);
        QVERIFY(m_pauses->underWay().isEmpty());
        QVERIFY(!presenter.isRunning());
        QCOMPARE(presenter.runTitle(), u"Run gig prep"_s);
        QVERIFY(presenter.hasSheet());
    }

    void endsInASetSheetOfWhatIsOnDisk()
    {
        GigRunPresenter presenter(m_user->start());
        run(presenter);
        QCOMPARE(presenter.sheetTracks(), u"4"_s);
        QCOMPARE(presenter.sheetCrates(), u"1"_s);
        QCOMPARE(presenter.sheetLength(), u"1h 20m"_s);
        QCOMPARE(presenter.sheetTempoPath(), u"124–124"_s);
        QCOMPARE(presenter.sheetKeys(), u"1"_s);
    }

    void theSheetFollowsTheLibrary()
    {
        GigRunPresenter presenter(m_user->start());
        run(presenter);
        m_user->app().dropFromLibrary(m_user->track(0));
        QCOMPARE(presenter.sheetTracks(), u"3"_s);
        QCOMPARE(presenter.sheetLength(), u"40m"_s);
    }

    void withoutFixesNothingIsWritten()
    {
        GigRunPresenter presenter(m_user->start());
        const QByteArray loud = contentOf(u'/' + m_loud);
        run(presenter);
        QCOMPARE(contentOf(u'/' + m_loud), loud);
        QCOMPARE(m_user->snapshotCount(), 0);
        QVERIFY(m_user->toasts().isEmpty());
        QVERIFY(m_user->app().changeEntries().isEmpty());
    }

    void levelsTagsAndHoldsCopiesWhereFixesAreAskedFor()
    {
        GigRunPresenter presenter(m_user->start());
        presenter.setApplyFixes(true);
        run(presenter);
        QCOMPARE(statuses(presenter).sliced(3, 2),
                 (QStringList{u"Levelled 2 tracks (tags)"_s, u"Held 1 duplicate copies"_s}));
        QCOMPARE(tint(presenter, 3), Tint::Good);
        QVERIFY(contentOf(u'/' + m_loud).contains("REPLAYGAIN_TRACK_GAIN"));
        QVERIFY(QFile::exists(m_user->home(u"large.mp3"_s)));
        QVERIFY(!QFile::exists(m_user->home(u"small.mp3"_s)));
        QCOMPARE(m_user->app().heldItems().size(), 1);
        QCOMPARE(m_user->toasts().first(), u"Levelled 2 tracks — tags only [Undo]"_s);
        // The sheet, and what the run went over, are those of the library as it now stands.
        QCOMPARE(presenter.sheetTracks(), u"3"_s);
        QCOMPARE(presenter.summary(), u"4 tracks · 1 crates"_s);
    }

    void fixesAreSkippedWithTheirCountsWhileSeratoRuns()
    {
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        GigRunPresenter presenter(app);
        const QByteArray database = m_user->database();
        presenter.setApplyFixes(true);
        run(presenter);
        QCOMPARE(statuses(presenter).sliced(3, 2),
                 (QStringList{u"2 off by ≥1.5 dB"_s, u"1 dupe groups"_s}));
        QCOMPARE(tint(presenter, 3), Tint::Warn);
        QCOMPARE(m_user->database(), database);
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 0);
        QCOMPARE(presenter.gate()->tint(), int(Tint::Warn));
    }

    void aFixThatFailsSaysSoItselfAndCountsAsDone()
    {
        AppState &app = m_user->start();
        GigRunPresenter presenter(app);
        presenter.setApplyFixes(true);
        QVERIFY(QFile::remove(u'/' + m_loud));
        run(presenter);
        QCOMPARE(statuses(presenter).at(3), u"Levelled 2 tracks (tags)"_s);
        QVERIFY2(m_user->toasts().first().endsWith(u" [!]"_s),
                 qPrintable(m_user->toasts().join(u'\n')));
    }

    void looksAtEachStepWhetherFixesAreAskedFor()
    {
        GigRunPresenter presenter(m_user->start());
        presenter.setApplyFixes(true);
        presenter.start();
        endPauses(4);
        presenter.setApplyFixes(false);
        endPauses(4);
        QCOMPARE(statuses(presenter).sliced(3, 2),
                 (QStringList{u"Levelled 2 tracks (tags)"_s, u"1 dupe groups"_s}));
        QVERIFY(m_user->app().heldItems().isEmpty());
    }

    void worksFromTheFiguresOfItsStart()
    {
        GigRunPresenter presenter(m_user->start());
        presenter.start();
        m_user->app().dropFromLibrary(m_user->track(4));
        endPauses(8);
        QCOMPARE(statuses(presenter).first(), u"1 need relinking"_s);
        QCOMPARE(presenter.summary(), u"4 tracks · 1 crates"_s);
    }

    void aSecondPressDuringARunDoesNothing()
    {
        GigRunPresenter presenter(m_user->start());
        presenter.start();
        endPauses(2);
        presenter.start();
        QCOMPARE(m_pauses->underWay().size(), 1);
        QCOMPARE(statuses(presenter).at(1), u"Every track gridded"_s);
    }

    void aSecondRunBeginsAfresh()
    {
        GigRunPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.steps());
        run(presenter);
        presenter.start();
        QVERIFY(!presenter.hasSheet());
        QCOMPARE(statuses(presenter), QStringList{u"Working…"_s} + waiting(7));
        endPauses(8);
        QVERIFY(presenter.hasSheet());
    }

    void aRunEndsWithItsScreen()
    {
        AppState &app = m_user->start();
        auto presenter = std::make_unique<GigRunPresenter>(app);
        presenter->setApplyFixes(true);
        presenter->start();
        endPauses(3);
        presenter.reset();
        QVERIFY(m_pauses->underWay().isEmpty());
        QVERIFY(m_user->toasts().isEmpty());
        QVERIFY(!GigRunPresenter(app).applyFixes());
    }

private:
    static Tint::Value tint(GigRunPresenter &presenter, int step)
    {
        return Tint::Value(presenter.steps()->index(step).data(RunStepModel::TintRole).toInt());
    }
    void endPauses(int count)
    {
        for (int i = 0; i < count; ++i)
            QVERIFY(m_pauses->endNext());
    }
    void run(GigRunPresenter &presenter)
    {
        presenter.start();
        endPauses(8);
        QVERIFY(!presenter.isRunning());
    }

    std::unique_ptr<CommandFixture> m_user;
    std::unique_ptr<platform::ScopedPauses> m_pauses;
    QString m_loud;
};

QTEST_GUILESS_MAIN(GigRunPresenterTest)
#include "gig_run_presenter_test.moc"
