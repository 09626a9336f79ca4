#include "screens/track_id/track_id_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using TrackIdFigures::Untagged;

class TrackIdFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsUntaggedTracksInLibraryOrder()
    {
        const Derived derived(mixedLibrary());
        QCOMPARE(lines(derived, TrackIdFigures::untagged(derived)),
                 (QStringList{u"1 Pop 50"_s, u"2 none"_s, u"3 House 100"_s, u"8 none"_s}));
    }

    void suggestsForThoseWhoseArtistIsTaggedElsewhere()
    {
        const Derived derived(mixedLibrary());
        const auto suggestions = TrackIdFigures::suggestions(TrackIdFigures::untagged(derived));
        QCOMPARE(lines(derived, suggestions), (QStringList{u"1 Pop 50"_s, u"3 House 100"_s}));
    }

    void isReadyFromNinetyFiveOn()
    {
        const std::vector<Untagged> all = {{0, GenreSuggestion{u"A"_s, 94}},
                                           {1, GenreSuggestion{u"B"_s, 95}},
                                           {2, GenreSuggestion{u"C"_s, 100}},
                                           {3, std::nullopt}};
        QCOMPARE(TrackIdFigures::ready(all), (std::vector{all[1], all[2]}));
    }

    void batchesWhatIsReadyByGenreInTheOrderMet()
    {
        const Derived derived(scanOf(
            {onDisk(u"A"_s, u"1"_s), onDisk(u"B"_s, u"2"_s), onDisk(u"A"_s, u"3"_s),
             onDisk(u"C"_s, u"4"_s), onDisk(u"D"_s, u"5"_s), onDisk(u"A"_s, u"6"_s).genre(u"Pop"_s),
             onDisk(u"B"_s, u"7"_s).genre(u"House"_s), onDisk(u"C"_s, u"8"_s).genre(u"pop"_s),
             onDisk(u"D"_s, u"9"_s).genre(u"Pop"_s), onDisk(u"D"_s, u"10"_s).genre(u"Soul"_s)}));
        QStringList found;
        for (const TrackIdFigures::Batch &batch : TrackIdFigures::batches(derived)) {
            found << batch.genre;
            for (const ScannedTrack &scanned : batch.tracks)
                found.last() += u' ' + scanned.track.title;
        }
        QCOMPARE(found, (QStringList{u"Pop 1 3"_s, u"House 2"_s, u"pop 4"_s}));
    }

private:
    static std::shared_ptr<const ScanResult> mixedLibrary()
    {
        return scanOf({onDisk(u"B"_s, u"1"_s), onDisk(u""_s, u"2"_s), onDisk(u"A"_s, u"3"_s),
                       onDisk(u"A"_s, u"4"_s).genre(u"House"_s),
                       onDisk(u"B"_s, u"5"_s).genre(u"Pop"_s),
                       onDisk(u"B"_s, u"6"_s).genre(u"Rock"_s), lost(u"A"_s, u"7"_s),
                       onDisk(u"Z"_s, u"8"_s)});
    }
    static QStringList lines(const Derived &derived, const std::vector<Untagged> &untagged)
    {
        QStringList all;
        for (const Untagged &one : untagged) {
            all << derived.result().tracks[one.index].track.title;
            all.last() +=
                one.suggestion
                    ? u" %1 %2"_s.arg(one.suggestion->genre).arg(one.suggestion->confidence)
                    : u" none"_s;
        }
        return all;
    }
};

QTEST_GUILESS_MAIN(TrackIdFiguresTest)
#include "track_id_figures_test.moc"
