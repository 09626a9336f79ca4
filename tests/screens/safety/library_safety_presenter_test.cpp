#include "screens/safety/library_safety_presenter.h"

#include "screens/safety/safety_texts.h"
#include "support/app_fixture.h"
#include "support/running_program.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class LibrarySafetyPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standsAtTheBeginningWithoutALibrary()
    {
        AppFixture fixture;
        LibrarySafetyPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        const QAbstractItemModelTester libraries(presenter.libraries());
        const QAbstractItemModelTester steps(presenter.steps());
        QCOMPARE(presenter.found(), u"0 found"_s);
        QCOMPARE(presenter.taken(), QString());
        QCOMPARE(presenter.takeTitle(), u"Take snapshot"_s);
        QCOMPARE(presenter.promises(), Safety::neverDoes());
        QCOMPARE(presenter.status(), u"Serato is closed — safe to work"_s);
        QCOMPARE(presenter.statusSymbol(), u"checkmark.seal.fill"_s);
        QCOMPARE(presenter.statusTint(), int(Tint::Good));
        QCOMPARE(stepsDone(presenter), u"-x--x"_s);
        QCOMPARE(presenter.steps()->index(3).data(SafetyStepModel::TitleRole), u"First snapshot"_s);
        QCOMPARE(presenter.steps()->index(3).data(SafetyStepModel::SnapshotRole), true);
        presenter.scan(0);
        QCOMPARE(fixture.app().phase(), AppState::Phase(ChooseLibrary{}));
    }

    void followsTheFirstSnapshot()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        LibrarySafetyPresenter presenter(fixture.launchAndScan());
        QCOMPARE(stepsDone(presenter), u"xxx-x"_s);
        presenter.takeFirstSnapshot();
        QCOMPARE(presenter.takeTitle(), u"Working…"_s);
        QVERIFY(!presenter.canTake());
        presenter.takeFirstSnapshot();
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(presenter.taken(), u"1 taken"_s);
        QCOMPARE(fixture.app().snapshots().first().reason, u"First snapshot"_s);
        QCOMPARE(stepsDone(presenter), u"xxxxx"_s);
    }

    void scansTheLibraryOfARow()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        fixture.writeVolumeDatabase(u"Stick"_s, {});
        LibrarySafetyPresenter presenter(fixture.launchAndScan());
        const LibraryModel &rows = *presenter.libraries();
        QCOMPARE(presenter.found(), u"2 found"_s);
        QCOMPARE(rows.index(0).data(LibraryModel::LoadedRole), true);
        QCOMPARE(rows.index(0).data(LibraryModel::TintRole), int(Tint::Good));
        QCOMPARE(rows.index(1).data(LibraryModel::VolumeRole), u"Stick"_s);
        QCOMPARE(rows.index(1).data(LibraryModel::CanScanRole), true);
        QCOMPARE(rows.index(1).data(LibraryModel::StateRole), u"Ready to scan"_s);
        presenter.scan(1);
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(rows.index(0).data(LibraryModel::LoadedRole), false);
        QCOMPARE(rows.index(1).data(LibraryModel::StateRole), u"Loaded and scanned"_s);
    }

    void saysThatSeratoRuns()
    {
        AppFixture fixture;
        const LibrarySafetyPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        const RunningProgram serato(u"Serato DJ Pro"_s);
        fixture.app().refreshEnvironment();
        QCOMPARE(presenter.status(), u"Serato is running — writes are blocked"_s);
        QCOMPARE(presenter.statusSymbol(), u"exclamationmark.triangle.fill"_s);
        QCOMPARE(presenter.statusTint(), int(Tint::Warn));
    }

private:
    static QString stepsDone(LibrarySafetyPresenter &presenter)
    {
        QString marks;
        for (int row = 0; row < presenter.steps()->rowCount(); ++row)
            marks += presenter.steps()->index(row).data(SafetyStepModel::DoneRole).toBool() ? u'x'
                                                                                            : u'-';
        return marks;
    }
};

QTEST_GUILESS_MAIN(LibrarySafetyPresenterTest)
#include "library_safety_presenter_test.moc"
