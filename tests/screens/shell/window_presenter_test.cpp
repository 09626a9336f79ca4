#include "screens/shell/window_presenter.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class WindowPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginsWithTheViewOfTheMoment()
    {
        AppFixture fixture;
        const WindowPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QCOMPARE(presenter.view().fileName(), u"FirstRunView.qml"_s);
        QVERIFY(presenter.viewPresenter());
    }

    void changesTheViewOnceWhereAScanEnds()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        AppState &app = fixture.launchAndScan();
        const WindowPresenter presenter(app);
        app.setSelection(Screen::Stems);
        QTRY_COMPARE(presenter.view().fileName(), u"ComingSoonScreen.qml"_s);
        QStringList views;
        connect(&presenter, &WindowPresenter::viewChanged, this,
                [&] { views += presenter.view().fileName(); });
        app.rescan();
        QVERIFY(fixture.waitUntilIdle());
        QTRY_COMPARE(presenter.view().fileName(), u"LibraryScoreScreen.qml"_s);
        QCOMPARE(views, QStringList({u"ScanningView.qml"_s, u"LibraryScoreScreen.qml"_s}));
    }

    void keepsAPresenterAsLongAsItsView()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        AppState &app = fixture.launchAndScan();
        const WindowPresenter presenter(app);
        const QPointer<QObject> before = presenter.viewPresenter();
        bool aliveWhileTheViewChanges = false;
        connect(&presenter, &WindowPresenter::viewChanged, this,
                [&] { aliveWhileTheViewChanges = bool(before); });
        app.setSelection(Screen::Stems);
        QTRY_VERIFY(!before);
        QVERIFY(aliveWhileTheViewChanges);
        QVERIFY(presenter.viewPresenter());
    }

    void changesBetweenTwoScreensThatAreStillToCome()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        AppState &app = fixture.launchAndScan();
        const WindowPresenter presenter(app);
        app.setSelection(Screen::Stems);
        QTRY_COMPARE(presenter.viewPresenter()->property("title"), u"Stems"_s);
        app.setSelection(Screen::Booth);
        QTRY_COMPARE(presenter.viewPresenter()->property("title"), u"Booth companion"_s);
    }

    void hasTheFiguresThatTakeLongWorkedOutBehindAScan()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        AppState &app = fixture.launch(AppState::Environment::Ignored);
        const WindowPresenter presenter(app);
        app.rescan();
        QVERIFY(fixture.waitUntilIdle());
        QVERIFY(app.hasHygiene());
        QVERIFY(app.hasVersions());
    }

    void looksAtTheMachineOnceWhenTheContentAppears()
    {
        AppFixture fixture;
        WindowPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        const QSignalSpy looked(&fixture.app(), &AppState::locationsChanged);
        presenter.contentAppeared();
        presenter.contentAppeared();
        QCOMPARE(looked.count(), 1);
    }
};

QTEST_GUILESS_MAIN(WindowPresenterTest)
#include "window_presenter_test.moc"
