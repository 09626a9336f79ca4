#include "screens/health/health_presenter.h"

#include "support/command_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class HealthPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsNothingWithoutALibrary()
    {
        AppFixture fixture;
        HealthPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLibrary());
        presenter.goTo(0);
        QCOMPARE(fixture.app().selection(), Screen::LibraryScore);
    }

    void findsNothingToDoInASoundLibrary()
    {
        CommandFixture user;
        user.addTrack(u"a.mp3"_s, {textRecord("tgen", u"House"), textRecord("tkey", u"8A")});
        const HealthPresenter presenter(user.start());
        QVERIFY(presenter.hasLibrary());
        QVERIFY(!presenter.hasSteps());
        QCOMPARE(presenter.missing(), u"0"_s);
        QCOMPARE(presenter.missingTint(), int(Tint::Good));
        QCOMPARE(presenter.groupsTint(), int(Tint::Good));
        QCOMPARE(presenter.untaggedTint(), int(Tint::Good));
        QCOMPARE(presenter.estimate(), u"~1 minutes"_s);
        QCOMPARE(presenter.genresNote(), u"1 tagged"_s);
        QCOMPARE(presenter.tempoNote(), u"0 analysed"_s);
    }

    void countsWhatIsWrongAndLeadsThere()
    {
        CommandFixture user;
        user.addMissingTrack(u"gone.mp3"_s);
        const QByteArrayList copy = {textRecord("tsng", u"Twice")};
        user.addTrack(u"a.mp3"_s, copy);
        user.addTrack(u"b.mp3"_s, copy);
        HealthPresenter presenter(user.start());
        QCOMPARE(presenter.missing(), u"1"_s);
        QCOMPARE(presenter.missingTint(), int(Tint::Accent));
        QCOMPARE(presenter.groups(), u"1"_s);
        QCOMPARE(presenter.groupsTint(), int(Tint::Warn));
        QCOMPARE(presenter.untagged(), u"3"_s);
        QCOMPARE(presenter.untaggedTint(), int(Tint::Warn));
        QVERIFY(!presenter.hasGenres());
        QCOMPARE(presenter.tempos()->rowCount(), 6);
        QCOMPARE(presenter.steps()->rowCount(), 4);
        presenter.goTo(4);
        QCOMPARE(user.app().selection(), Screen::LibraryScore);
        presenter.goTo(1);
        QCOMPARE(user.app().selection(), Screen::Duplicates);
    }

    void followsTheLibrary()
    {
        CommandFixture user;
        user.addMissingTrack(u"gone.mp3"_s);
        AppState &app = user.start();
        const HealthPresenter presenter(app);
        const QSignalSpy changed(&presenter, &HealthPresenter::changed);
        app.dropFromLibrary(user.track(0));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(presenter.missing(), u"0"_s);
        QVERIFY(!presenter.hasSteps());
    }
};

QTEST_GUILESS_MAIN(HealthPresenterTest)
#include "health_presenter_test.moc"
