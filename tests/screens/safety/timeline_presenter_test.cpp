#include "screens/safety/timeline_presenter.h"

#include "foundation/byte_format.h"
#include "platform/clock.h"
#include "support/command_fixture.h"
#include "support/running_program.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class TimelinePresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesSnapshotsNewestFirst()
    {
        CommandFixture user;
        platform::ScopedClock clock(QDateTime(QDate(2026, 11, 20), QTime(12, 0), Qt::UTC));
        AppState &app = user.start();
        TimelinePresenter timeline(app);
        const QAbstractItemModelTester tester(timeline.snapshots());
        QVERIFY(!timeline.hasSnapshots());
        timeline.take();
        QVERIFY(!timeline.canTake());
        timeline.take();
        QVERIFY(user.waitUntilIdle());
        QVERIFY(timeline.canTake());
        clock.set(QDateTime(QDate(2026, 11, 20), QTime(12, 1), Qt::UTC));
        app.takeSnapshot(u"Another"_s);
        QVERIFY(user.waitUntilIdle());
        QCOMPARE(timeline.snapshots()->rowCount(), 2);
        const QModelIndex newest = timeline.snapshots()->index(0);
        QCOMPARE(newest.data(SnapshotModel::ReasonRole), u"Another"_s);
        const Snapshot &shown = app.snapshots().first();
        QCOMPARE(newest.data(SnapshotModel::LineRole),
                 QString(shown.shortDate() + u" · "_s + ByteFmt::string(shown.byteSize)));
        QCOMPARE(timeline.snapshots()->index(1).data(SnapshotModel::ReasonRole),
                 u"Manual snapshot"_s);
    }

    void rollsBackToASnapshot()
    {
        CommandFixture user;
        user.addMissingTrack(u"gone.mp3"_s);
        AppState &app = user.start();
        TimelinePresenter timeline(app);
        const QByteArray before = user.database();
        app.dropFromLibrary(user.track(0));
        QVERIFY(user.database() != before);
        timeline.rollBack(u"no such snapshot"_s);
        QCOMPARE(app.pendingTasks(), 0);
        timeline.rollBack(timeline.snapshots()->index(0).data(SnapshotModel::KeyRole).toString());
        QVERIFY(user.waitUntilIdle());
        QCOMPARE(user.database(), before);
    }

    void rollsNothingBackWhileSeratoRuns()
    {
        CommandFixture user;
        AppState &app = user.start();
        const TimelinePresenter timeline(app);
        QVERIFY(timeline.canRollBack());
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        QVERIFY(!timeline.canRollBack());
    }
};

QTEST_GUILESS_MAIN(TimelinePresenterTest)
#include "timeline_presenter_test.moc"
