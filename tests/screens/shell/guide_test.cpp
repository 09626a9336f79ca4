#include "screens/shell/guide.h"

#include "screens/shell/window_presenter.h"
#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// Lies in a folder that has no guide beside it.
class GuideTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aProgramWithoutItsGuideSaysSo()
    {
        QVERIFY(!showGuide());
        AppFixture fixture;
        AppState &app = fixture.launch(AppState::Environment::Ignored);
        WindowPresenter presenter(app);
        presenter.openGuide();
        QVERIFY(app.toast());
        QCOMPARE(app.toast()->message, u"The guide is not installed."_s);
        QVERIFY(!app.toast()->reversible);
    }
};

QTEST_MAIN(GuideTest)
#include "guide_test.moc"
