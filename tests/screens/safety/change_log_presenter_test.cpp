#include "screens/safety/change_log_presenter.h"

#include "screens/safety/change_log_figures.h"
#include "support/command_fixture.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class ChangeLogPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst()
    {
        CommandFixture user;
        const ChangeLogPresenter log(user.start());
        QVERIFY(!log.hasChanges());
        QVERIFY(!log.hasReversible());
        QCOMPARE(log.made(), u"0"_s);
        QCOMPARE(log.held(), u"0"_s);
        QCOMPARE(log.heldTint(), int(Tint::Ink));
        QCOMPARE(log.snapshots(), u"0"_s);
    }

    void takesOneChangeBackOrAllOfThem()
    {
        CommandFixture user;
        const QByteArrayList copy = {textRecord("tsng", u"Twice")};
        user.addTrack(u"a.mp3"_s, copy, "aaa");
        user.addTrack(u"b.mp3"_s, copy, "b");
        AppState &app = user.start();
        ChangeLogPresenter log(app);
        const QAbstractItemModelTester tester(log.changes());
        app.setGenre(user.track(0), u"House"_s);
        const auto derived = app.derived();
        const DuplicateGroup group = derived->duplicateGroups.front();
        app.resolveDuplicates(group, group.members.front().id());
        app.takeSnapshot(u"By hand"_s);
        QVERIFY(user.waitUntilIdle());
        QCOMPARE(log.changes()->rowCount(), 3);
        QCOMPARE(log.made(), u"2"_s);
        QCOMPARE(log.held(), u"1"_s);
        QCOMPARE(log.heldTint(), int(Tint::Warn));
        QVERIFY(log.hasReversible());
        const ChangeEntry snapshot = app.changeEntries().first();
        QCOMPARE(cell(log, 0, ChangeModel::KindRole), ChangeEntry::label(snapshot.kind));
        QCOMPARE(cell(log, 0, ChangeModel::DetailRole), u"By hand"_s);
        QCOMPARE(cell(log, 0, ChangeModel::LineRole), ChangeLogFigures::reversibility(snapshot));
        QCOMPARE(cell(log, 0, ChangeModel::ActsRole), false);
        QCOMPARE(cell(log, 1, ChangeModel::ActsRole), true);
        log.undo(cell(log, 1, ChangeModel::KeyRole).toString());
        QCOMPARE(log.held(), u"0"_s);
        QVERIFY(QFile::exists(user.home(u"b.mp3"_s)));
        QCOMPARE(cell(log, 1, ChangeModel::UndoneRole), true);
        QCOMPARE(cell(log, 1, ChangeModel::ActsRole), false);
        QCOMPARE(cell(log, 1, ChangeModel::LineRole), u"Reversed"_s);
        log.undoEverything();
        QVERIFY(!log.hasReversible());
        QCOMPARE(user.track(0).track.genre, QString());
        QCOMPARE(log.made(), u"2"_s);
    }

private:
    static QVariant cell(ChangeLogPresenter &log, int row, int role)
    {
        return log.changes()->index(row).data(role);
    }
};

QTEST_GUILESS_MAIN(ChangeLogPresenterTest)
#include "change_log_presenter_test.moc"
