#include "screens/shell/first_run_presenter.h"

#include "screens/safety/safety_texts.h"
#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class FirstRunPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheLibrariesFound()
    {
        AppFixture fixture;
        FirstRunPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLocations());
        fixture.writeVolumeDatabase(u"Stick"_s, {});
        fixture.app().refreshEnvironment();
        QVERIFY(presenter.hasLocations());
        QCOMPARE(presenter.locations()->rowCount(), 1);
    }

    void scansTheLibraryOfTheRow()
    {
        AppFixture fixture;
        fixture.writeVolumeDatabase(u"A"_s, {});
        fixture.writeVolumeDatabase(u"B"_s, {});
        FirstRunPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        presenter.scan(1);
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(fixture.app().result()->location.volumeName, u"B"_s);
    }

    void scansNothingBesideItsRows()
    {
        AppFixture fixture;
        FirstRunPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        presenter.scan(0);
        presenter.scan(-1);
        QCOMPARE(fixture.app().phase(), AppState::Phase(ChooseLibrary{}));
    }

    void promisesWhatTheProgramPromises()
    {
        AppFixture fixture;
        const FirstRunPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QCOMPARE(presenter.promises(), Safety::neverDoes());
    }
};

QTEST_GUILESS_MAIN(FirstRunPresenterTest)
#include "first_run_presenter_test.moc"
