#include "screens/track_id/track_id_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using TrackIdFigures::Suggestion;

class TrackIdFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void suggestsForUntaggedTracksInLibraryOrder()
    {
        const Derived derived(scanOf(
            {onDisk(u"B"_s, u"1"_s), onDisk(u""_s, u"2"_s), onDisk(u"A"_s, u"3"_s),
             onDisk(u"A"_s, u"4"_s).genre(u"House"_s), onDisk(u"B"_s, u"5"_s).genre(u"Pop"_s),
             onDisk(u"B"_s, u"6"_s).genre(u"Rock"_s), lost(u"A"_s, u"7"_s)}));
        QStringList found;
        for (const Suggestion &one : TrackIdFigures::suggestions(derived))
            found << u"%1 %2 %3"_s.arg(one.track.track.title, one.genre).arg(one.confidence);
        QCOMPARE(found, (QStringList{u"1 Pop 50"_s, u"3 House 100"_s}));
    }

    void isReadyFromNinetyFiveOn()
    {
        const std::vector<Suggestion> all = {
            {onDisk(), u"A"_s, 94}, {onDisk(), u"B"_s, 95}, {onDisk(), u"C"_s, 100}};
        QCOMPARE(TrackIdFigures::ready(all), (std::vector{all[1], all[2]}));
    }

    void batchesByGenreInTheOrderMet()
    {
        const auto batches = TrackIdFigures::batches({{onDisk({}, u"1"_s), u"Pop"_s, 95},
                                                      {onDisk({}, u"2"_s), u"House"_s, 95},
                                                      {onDisk({}, u"3"_s), u"Pop"_s, 95},
                                                      {onDisk({}, u"4"_s), u"pop"_s, 95}});
        QCOMPARE(batches.size(), 3u);
        QCOMPARE(batches[0].genre, u"Pop"_s);
        QCOMPARE(batches[0].tracks.size(), 2u);
        QCOMPARE(batches[0].tracks[1].track.title, u"3"_s);
        QCOMPARE(batches[1].genre, u"House"_s);
        QCOMPARE(batches[2].genre, u"pop"_s);
    }
};

QTEST_GUILESS_MAIN(TrackIdFiguresTest)
#include "track_id_figures_test.moc"
