#include "screens/duplicates/duplicate_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class DuplicateFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aGroupTellsItsCopiesAndWhatTheyTakeUp()
    {
        DuplicateGroup group;
        group.members = {onDisk(), onDisk(), onDisk()};
        group.reclaimableBytes = 2'500'000;
        QCOMPARE(DuplicateFigures::copies(group), u"3 copies"_s);
        QCOMPARE(DuplicateFigures::reclaimable(group), u"2.5 MB reclaimable"_s);
    }

    void aCopyTellsWhatItHas_data()
    {
        QTest::addColumn<ScannedTrack>("member");
        QTest::addColumn<QString>("tags");
        QTest::newRow("all") << ScannedTrack(onDisk().grid().markers().bitrate(u"320.0kbps"_s))
                             << u"grid cues 320k"_s;
        QTest::newRow("a grid") << ScannedTrack(onDisk().grid()) << u"grid 0k"_s;
        QTest::newRow("cues") << ScannedTrack(onDisk().markers()) << u"cues 0k"_s;
        QTest::newRow("nothing") << ScannedTrack(onDisk()) << u"0k"_s;
    }
    void aCopyTellsWhatItHas()
    {
        QFETCH(const ScannedTrack, member);
        QTEST(DuplicateFigures::tagsOf(member).join(u' '), "tags");
    }
};

QTEST_APPLESS_MAIN(DuplicateFiguresTest)
#include "duplicate_figures_test.moc"
