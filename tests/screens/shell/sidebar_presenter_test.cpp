#include "screens/shell/sidebar_presenter.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr int changeLogRow = 21;

QString entry(const QString &kind, int number)
{
    return u"{\"date\":\"2026-01-01T00:00:0%2Z\",\"detail\":\"d\",\"id\":\"%1-%2\","
           "\"kind\":\"%1\",\"reversed\":false,\"target\":\"t\"}"_s.arg(kind)
               .arg(number);
}

/// Two changes and a snapshot, which is none.
QByteArray changes()
{
    const QStringList entries = {entry(u"relink"_s, 3), entry(u"snapshot"_s, 2),
                                 entry(u"relink"_s, 1)};
    return '[' + entries.join(u',').toUtf8() + ']';
}

} // namespace

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

    void countsTheChangesOnceTheLogHasBeenRead()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        fixture.root().write(u"data/Tarnwick/changelog.json"_s, changes());
        SidebarPresenter presenter(fixture.launch(AppState::Environment::Ignored));
        const QModelIndex row = presenter.rows()->index(changeLogRow);
        QCOMPARE(row.data(SidebarModel::TitleRole), u"Change log"_s);
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(row.data(SidebarModel::BadgeRole), QString());
        presenter.rescan();
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(row.data(SidebarModel::BadgeRole), u"2"_s);
    }

    /// As a launch that starts a scan has it: the log may be there later than the library.
    void countsTheChangesWhicheverComesFirst()
    {
        AppFixture fixture;
        fixture.writeHomeDatabase({});
        fixture.root().write(u"data/Tarnwick/changelog.json"_s, changes());
        const ScopedVariable scan("TARNWICK_AUTOSCAN", "1");
        SidebarPresenter presenter(fixture.launch());
        QVERIFY(fixture.waitUntilIdle());
        QCOMPARE(presenter.rows()->index(changeLogRow).data(SidebarModel::BadgeRole), u"2"_s);
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
