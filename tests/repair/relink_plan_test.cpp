#include "repair/relink_plan.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class RelinkPlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dropsTheLeadingSlashOfANewPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        QTest::newRow("one slash") << u"/music/new.mp3"_s << u"music/new.mp3"_s;
        QTest::newRow("per cent sign and blank") << u"/music/50 %25.mp3"_s << u"music/50 %25.mp3"_s;
    }
    void dropsTheLeadingSlashOfANewPath()
    {
        QFETCH(const QString, path);
        QTEST(RelinkPlan::relativePathOf(QUrl::fromLocalFile(path)), "expected");
    }

    void namesTheFileInTheReasons()
    {
        SeratoTrack track;
        track.relativePath = u"music/old.mp3"_s;
        QCOMPARE(RelinkPlan::relinkReason(track), u"Before: relink old.mp3"_s);
        QCOMPARE(RelinkPlan::dropReason(track), u"Before: drop old.mp3"_s);
    }
};

QTEST_GUILESS_MAIN(RelinkPlanTest)
#include "relink_plan_test.moc"
