#include "screens/shell/sidebar_presenter.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class SidebarPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasNoTotalsBeforeTheFirstScan()
    {
        AppFixture fixture;
        const SidebarPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasTotals());
        QCOMPARE(presenter.tracks(), QString());
    }

    void addsTheLibraryUpOnceForEachChange()
    {
        AppFixture fixture;
        const QString path = fixture.writeAudio(u"dawn.mp3"_s, QByteArray(3'000'000, 'x'));
        fixture.writeHomeDatabase({trackRecord({textRecord("pfil", path)})});
        SidebarPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        const QSignalSpy changed(&presenter, &SidebarPresenter::totalsChanged);
        presenter.rescan();
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(changed.count(), 1);
        QVERIFY(presenter.hasTotals());
        QCOMPARE(presenter.tracks(), u"1"_s);
        QCOMPARE(presenter.onDisk(), u"3 MB"_s);
        QCOMPARE(presenter.reclaim(), u"0 MB"_s);
    }

    void selectsTheScreenOfARow()
    {
        AppFixture fixture;
        SidebarPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        presenter.select(12);
        QCOMPARE(fixture.app().selection(), Screen::Stems);
        QCOMPARE(presenter.rows()->index(12).data(SidebarModel::SelectedRole), true);
        presenter.select(99);
        presenter.select(-1);
        QCOMPARE(fixture.app().selection(), Screen::Stems);
    }
};

QTEST_GUILESS_MAIN(SidebarPresenterTest)
#include "sidebar_presenter_test.moc"
