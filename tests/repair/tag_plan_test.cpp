#include "repair/tag_plan.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class TagPlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void speaksOfOneTrackOrOfSeveral()
    {
        QCOMPARE(TagPlan::genreBatchSummary(1, u"House"_s), u"Tagged 1 track as House"_s);
        QCOMPARE(TagPlan::genreBatchSummary(0, u"House"_s), u"Tagged 0 tracks as House"_s);
        QCOMPARE(TagPlan::genreBatchReason(1, u"House"_s), u"Before: tag 1 tracks · House"_s);
        QCOMPARE(TagPlan::gainBatchSummary(1), u"Levelled 1 track — tags only"_s);
        QCOMPARE(TagPlan::gainBatchSummary(12), u"Levelled 12 tracks — tags only"_s);
        QCOMPARE(TagPlan::gainBatchReason(1), u"Before: normalize 1 tracks"_s);
    }

    void takesAGenreAsItStands()
    {
        QCOMPARE(TagPlan::genreBatchSummary(2, u"%1 %2"_s), u"Tagged 2 tracks as %1 %2"_s);
        QCOMPARE(TagPlan::genreBatchReason(2, u"%1"_s), u"Before: tag 2 tracks · %1"_s);
    }

    void marksAnEmptyGenreInTheLog()
    {
        SeratoTrack track;
        QCOMPARE(TagPlan::genreSet(track, u"House"_s).before, u"—"_s);
        track.genre = u" "_s;
        QCOMPARE(TagPlan::genreSet(track, u"House"_s).before, u" "_s);
    }

    void writesGainsWithTwoDecimals_data()
    {
        QTest::addColumn<double>("gain");
        QTest::addColumn<QString>("expected");
        QTest::newRow("negative") << -3.256 << u"Wrote ReplayGain -3.26 dB (tag only)"_s;
        QTest::newRow("whole") << 2.0 << u"Wrote ReplayGain 2.00 dB (tag only)"_s;
    }
    void writesGainsWithTwoDecimals()
    {
        QFETCH(const double, gain);
        QTEST(TagPlan::gainWrittenInBatch({}, gain).detail, "expected");
    }
};

QTEST_GUILESS_MAIN(TagPlanTest)
#include "tag_plan_test.moc"
