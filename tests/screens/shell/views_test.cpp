#include "screens/shell/views.h"

#include "support/app_fixture.h"

#include <QFile>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class ViewsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followThePhase()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        AppState &app = fixture.launch(AppState::Environment::Ignored);
        app.setSelection(Screen::Health);
        QCOMPARE(wantedView(app), ViewKey{ViewKey::Kind::FirstRun});
        app.rescan();
        QCOMPARE(wantedView(app), ViewKey{ViewKey::Kind::Scanning});
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(wantedView(app), (ViewKey{ViewKey::Kind::Screen, Screen::LibraryScore}));
        app.setSelection(Screen::Stems);
        QCOMPARE(wantedView(app), (ViewKey{ViewKey::Kind::Screen, Screen::Stems}));
    }

    void countTheScreenForScreensAlone()
    {
        const ViewKey firstRun{ViewKey::Kind::FirstRun, Screen::Health};
        QCOMPARE(firstRun, ViewKey{ViewKey::Kind::FirstRun});
        QVERIFY(!(ViewKey{ViewKey::Kind::Screen, Screen::Health} ==
                  ViewKey{ViewKey::Kind::Screen, Screen::Stems}));
    }

    void existForEveryScreen()
    {
        AppFixture fixture;
        AppState &app = fixture.launch(AppState::Environment::Ignored);
        QObject owner;
        for (const ScreenInfo &info : allScreens()) {
            const ViewKey key{ViewKey::Kind::Screen, info.screen};
            QVERIFY(QFile::exists(u":"_s + sourceOf(key).path()));
            QCOMPARE(makePresenter(key, app, &owner)->parent(), &owner);
        }
        for (const auto kind : {ViewKey::Kind::FirstRun, ViewKey::Kind::Scanning})
            QVERIFY(QFile::exists(u":"_s + sourceOf({kind}).path()));
    }

    void theScreensThatNobodyIsBuildingComeSoon()
    {
        for (const ScreenInfo &info : allScreens()) {
            if (!info.isImplemented) {
                QCOMPARE(sourceOf({ViewKey::Kind::Screen, info.screen}).fileName(),
                         u"ComingSoonScreen.qml"_s);
            }
        }
    }
};

QTEST_GUILESS_MAIN(ViewsTest)
#include "views_test.moc"
