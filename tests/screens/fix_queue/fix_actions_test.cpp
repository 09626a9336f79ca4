#include "screens/fix_queue/fix_actions.h"

#include "support/command_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class FixActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fixesEverySafeIssueInQueueOrderAndTellsTheViewsOnce()
    {
        CommandFixture user;
        user.addTrack(u"bare.mp3"_s, fields(u"Artist"_s, u"Bare"_s));
        user.addTrack(u"tagged.mp3"_s, fields(u"Artist"_s, u"Tagged"_s) +
                                           QByteArrayList{textRecord("tgen", u"House")});
        const QByteArrayList copy =
            fields(u"Two"_s, u"Copies"_s) + QByteArrayList{textRecord("tgen", u"Pop")};
        user.addTrack(u"small.mp3"_s, copy, QByteArray(10, 'a'));
        user.addTrack(u"large.mp3"_s, copy, QByteArray(20, 'a'));
        user.addMissingTrack(u"gone.mp3"_s, {textRecord("tgen", u"Pop")});
        AppState &app = user.start();
        QSignalSpy library(&app, &AppState::libraryChanged);
        FixActions::fixAllSafe(app);
        QCOMPARE(library.size(), 1);
        QCOMPARE(user.toasts(),
                 QStringList{u"Kept 1, moved 1 to holding — 0 KB reclaimable [Undo]"_s});
        QCOMPARE(app.changeEntries().size(), 2);
        QCOMPARE(app.changeEntries().at(0).kind, ChangeEntry::Kind::Tag);
        QCOMPARE(app.changeEntries().at(1).kind, ChangeEntry::Kind::Dedupe);
        QCOMPARE(user.track(0).track.genre, u"House"_s);
        const auto left = FixQueueFigures::issuesOf(*app.derived());
        QCOMPARE(left.size(), 1u);
        QCOMPARE(left.front().kind, FixQueueFigures::Kind::Missing);
    }

    void leavesAloneWhatHasNoFix()
    {
        CommandFixture user;
        user.addMissingTrack(u"gone.mp3"_s);
        AppState &app = user.start();
        const auto derived = app.derived();
        FixActions::fix(app, *derived, FixQueueFigures::issuesOf(*derived).front());
        FixActions::fixAllSafe(app);
        QVERIFY(user.toasts().isEmpty());
        QCOMPARE(user.snapshotCount(), 0);
    }

    void doesNothingWithoutALibrary()
    {
        CommandFixture user;
        AppState &app = user.launch(AppState::Environment::Ignored);
        FixActions::fixAllSafe(app);
        QVERIFY(!app.toast());
    }

private:
    static QByteArrayList fields(const QString &artist, const QString &title)
    {
        return {textRecord("tart", artist), textRecord("tsng", title)};
    }
};

QTEST_GUILESS_MAIN(FixActionsTest)
#include "fix_actions_test.moc"
