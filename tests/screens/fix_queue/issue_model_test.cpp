#include "screens/fix_queue/issue_model.h"

#include "support/command_fixture.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class IssueModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesWhatARowShows()
    {
        CommandFixture user;
        user.addMissingTrack(u"gone.mp3"_s,
                             {textRecord("tart", u"Ash"), textRecord("tsng", u"Ebb")});
        const QByteArrayList copy = {textRecord("tsng", u"Twice"), textRecord("tgen", u"Pop")};
        user.addTrack(u"a.mp3"_s, copy);
        user.addTrack(u"b.mp3"_s, copy);
        AppState &app = user.start();
        IssueModel model(app);
        const QAbstractItemModelTester tester(&model);
        model.setIssues(FixQueueFigures::issuesOf(*app.derived()));
        QCOMPARE(model.rowCount(), 2);
        const QModelIndex missing = model.index(0);
        QCOMPARE(missing.data(IssueModel::TypeRole), u"Missing"_s);
        QCOMPARE(missing.data(IssueModel::TrackRole), u"Ash — Ebb"_s);
        QCOMPARE(missing.data(IssueModel::LineRole),
                 u"File not found on disk → Relink to its real location"_s);
        QCOMPARE(missing.data(IssueModel::SafeRole), false);
        QCOMPARE(missing.data(IssueModel::FixableRole), false);
        const QModelIndex group = model.index(1);
        QCOMPARE(group.data(IssueModel::TypeRole), u"Duplicate"_s);
        QCOMPARE(group.data(IssueModel::LineRole),
                 u"2 copies · 0 KB → Keep best, hold the rest 30 days"_s);
        QCOMPARE(group.data(IssueModel::SafeRole), true);
        QCOMPARE(group.data(IssueModel::FixableRole), true);
        QCOMPARE(model.issueOf(group.data(IssueModel::KeyRole).toString())->kind,
                 FixQueueFigures::Kind::Duplicate);
        QVERIFY(!model.issueOf(u"else"_s));
    }

    void tellsRecordsOfOnePathApart()
    {
        CommandFixture user;
        user.addMissingTrack(u"gone.mp3"_s, {textRecord("tsng", u"Ebb")});
        user.addMissingTrack(u"gone.mp3"_s, {textRecord("tsng", u"Flow")});
        AppState &app = user.start();
        IssueModel model(app);
        model.setIssues(FixQueueFigures::issuesOf(*app.derived()));
        QCOMPARE(model.rowCount(), 2);
        for (int row = 0; row < 2; ++row) {
            const QString key = model.index(row).data(IssueModel::KeyRole).toString();
            QCOMPARE(model.issueOf(key)->index, size_t(row));
        }
    }
};

QTEST_GUILESS_MAIN(IssueModelTest)
#include "issue_model_test.moc"
