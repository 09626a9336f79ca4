#include "screens/shell/toast_presenter.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class ToastPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheToastOfTheMoment()
    {
        AppFixture fixture;
        const ToastPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.isShown());
        fixture.app().showToast(u"Moved."_s, Reversible::Yes);
        QVERIFY(presenter.isShown());
        QCOMPARE(presenter.message(), u"Moved."_s);
        QVERIFY(presenter.isReversible());
        fixture.app().showToast(u"Done."_s);
        QCOMPARE(presenter.message(), u"Done."_s);
        QVERIFY(!presenter.isReversible());
    }

    void keepsTheLastMessageWhileTheBarGoes()
    {
        AppFixture fixture;
        const ToastPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        fixture.app().showToast(u"Moved."_s, Reversible::Yes);
        QTRY_VERIFY_WITH_TIMEOUT(!presenter.isShown(), 6000);
        QCOMPARE(presenter.message(), u"Moved."_s);
        QVERIFY(presenter.isReversible());
    }
};

QTEST_GUILESS_MAIN(ToastPresenterTest)
#include "toast_presenter_test.moc"
