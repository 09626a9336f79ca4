#include "screens/safety/write_gate_presenter.h"

#include "support/app_fixture.h"
#include "support/running_program.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class WriteGatePresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOpenWhileSeratoIsClosed()
    {
        AppFixture fixture;
        const WriteGatePresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QCOMPARE(presenter.symbol(), u"checkmark.shield.fill"_s);
        QCOMPARE(presenter.tint(), int(Tint::Good));
        QCOMPARE(presenter.text(),
                 u"Safe to make changes — every fix takes a snapshot first and is "
                 "reversible for 30 days."_s);
    }

    void isShutWhileSeratoRuns()
    {
        AppFixture fixture;
        const WriteGatePresenter presenter(fixture.launch(AppState::Environment::Ignored));
        const QSignalSpy changed(&presenter, &WriteGatePresenter::changed);
        const RunningProgram serato(u"Serato DJ Pro"_s);
        fixture.app().refreshEnvironment();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(presenter.symbol(), u"exclamationmark.triangle.fill"_s);
        QCOMPARE(presenter.tint(), int(Tint::Warn));
        QCOMPARE(presenter.text(), u"Serato is running. Changes are blocked until you close it — "
                                   "reading stays available."_s);
    }
};

QTEST_GUILESS_MAIN(WriteGatePresenterTest)
#include "write_gate_presenter_test.moc"
