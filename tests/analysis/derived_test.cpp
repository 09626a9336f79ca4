#include "analysis/derived.h"

#include "support/track_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

class DerivedTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyLibraryIsPerfect()
    {
        const Derived derived(scanOf({}));
        QCOMPARE(derived.score, 100);
        QCOMPARE(derived.grade(), u"This library is gig-ready."_s);
        QCOMPARE(derived.worst(), derived.dimensions.first());
        QCOMPARE(derived.estimatedMinutes(), 1);
        for (const Dimension &dimension : derived.dimensions)
            QCOMPARE(dimension.score, 100);
    }

    void sharesTheScan()
    {
        const auto scan = scanOf({onDisk(u"A"_s, u"x"_s)});
        const Derived derived(scan);
        QCOMPARE(&derived.result(), scan.get());
        QCOMPARE(&Derived(derived).result(), scan.get());
    }

    void figuresOfDuplicatesAddUp()
    {
        const Derived derived(scanOf(
            {onDisk(u"A"_s, u"x"_s).bytes(10'000'000), onDisk(u"A"_s, u"x"_s).bytes(20'000'000),
             onDisk(u"A"_s, u"x"_s).bytes(30'000'000), onDisk(u"B"_s, u"y"_s).bytes(4'000'000),
             onDisk(u"B"_s, u"y"_s).bytes(5'000'000), onDisk(u"C"_s, u"z"_s)}));
        QCOMPARE(derived.duplicateGroups.size(), size_t(2));
        QCOMPARE(derived.duplicateExcess, 3);
        QCOMPARE(derived.reclaimableBytes, quint64(34'000'000));
        QCOMPARE(derived.dimensions.at(2).score, 50);
        QCOMPARE(derived.dimensions.at(2).detail, u"3 redundant copies · 34 MB reclaimable"_s);
    }

    void anIgnoredKeyRaisesTheScore()
    {
        const auto scan =
            scanOf({onDisk(u"A"_s, u"x"_s).bytes(10'000'000), onDisk(u"a"_s, u"X "_s)});
        QCOMPARE(Derived(scan).dimensions.at(2).score, 50);
        const Derived ignoring(scan, {u"a|x"_s});
        QVERIFY(ignoring.duplicateGroups.empty());
        QCOMPARE(ignoring.duplicateExcess, 0);
        QCOMPARE(ignoring.reclaimableBytes, quint64(0));
        QCOMPARE(ignoring.dimensions.at(2).score, 100);
    }

    void countsAndScoresOfASmallLibrary()
    {
        const Derived derived(scanOf({
            onDisk(u"A"_s, u"x"_s).genre(u"House"_s).key(u"Am"_s).bpm(u"120"_s).tagsRead().grid(),
            onDisk(u"B"_s, u"y"_s).flaggedMissing().tagsRead().gain().markers(),
            lost(u""_s, u"z"_s).bpm(u"0"_s),
        }));
        QCOMPARE(derived.total, 3);
        QCOMPARE(derived.onDisk, 2);
        QCOMPARE(derived.missing, 2);
        QList<int> scores;
        for (const Dimension &dimension : derived.dimensions)
            scores << dimension.score;
        QCOMPARE(scores, (QList<int>{67, 50, 100, 50, 50, 33}));
        QCOMPARE(derived.score, 58);
        QCOMPARE(derived.grade(), u"Playable, but it needs a clean."_s);
        QCOMPARE(derived.worst().id(), u"Export parity"_s);
        QCOMPARE(derived.estimatedMinutes(), 2);
    }

    void theEarliestOfEqualWorstDimensions()
    {
        const Derived derived(scanOf({onDisk().tagsRead(), onDisk().tagsRead()}));
        QCOMPARE(derived.dimensions.at(1).score, 0);
        QCOMPARE(derived.dimensions.at(4).score, 0);
        QCOMPARE(derived.worst().kind, Dimension::Kind::CuesGrids);
    }

    void missingTracksInLibraryOrder()
    {
        const ScannedTrack gone = lost(u"A"_s, u"x"_s);
        const ScannedTrack flagged = onDisk(u"B"_s, u"y"_s).flaggedMissing();
        const Derived derived(scanOf({gone, onDisk(u"C"_s, u"z"_s), flagged}));
        QCOMPARE(derived.missingTracks(), (std::vector{gone, flagged}));
    }

    void untaggedTracksAreOnDiskAndInLibraryOrder()
    {
        const ScannedTrack blank = onDisk(u"A"_s, u"x"_s).genre(u" \t"_s);
        const ScannedTrack empty = onDisk(u"B"_s, u"y"_s).flaggedMissing();
        const Derived derived(
            scanOf({blank, onDisk().genre(u"House"_s), lost(u"D"_s, u"v"_s), empty}));
        QCOMPARE(derived.untaggedTracks(), (std::vector{blank, empty}));
    }

    void loudnessAgainstTheAverage()
    {
        const ScannedTrack loud = onDisk(u"A"_s).autogain(-6.0);
        const ScannedTrack soft = onDisk(u"B"_s).autogain(3.0);
        const ScannedTrack unknown = onDisk(u"C"_s).gain();
        const Derived derived(scanOf({loud, soft, unknown}));
        QCOMPARE(derived.avgAutogain(), -1.5);
        QCOMPARE(derived.tracksWithGain(), (std::vector{loud, soft}));
        QCOMPARE(derived.loudnessDeviation(loud), std::optional(4.5));
        QCOMPARE(derived.normalizingGain(loud), std::optional(-4.5));
        QCOMPARE(derived.loudnessDeviation(soft), std::optional(-4.5));
        QCOMPARE(derived.normalizingGain(soft), std::optional(4.5));
        QCOMPARE(derived.loudnessDeviation(unknown), std::optional<double>());
        QCOMPARE(derived.normalizingGain(unknown), std::optional<double>());
    }

    void withoutAnyGainTheAverageIsZero()
    {
        const Derived derived(scanOf({onDisk(u"A"_s)}));
        QCOMPARE(derived.avgAutogain(), 0.0);
        QVERIFY(derived.tracksWithGain().empty());
    }

    void versionsAndGenresComeFromTheScan()
    {
        const Derived derived(scanOf({onDisk(u"A"_s, u"x"_s), onDisk(u"A"_s, u"x (Dub)"_s),
                                      lost(u"a"_s, u"y"_s).genre(u"House"_s)}));
        const std::vector<Derived::VersionGroup> groups = derived.versionGroups();
        QCOMPARE(groups.size(), size_t(1));
        QCOMPARE(groups[0].base, u"A — X"_s);
        QVERIFY(groups[0].id != derived.versionGroups().at(0).id);
        const std::optional expected(GenreSuggestion{u"House"_s, 100});
        QCOMPARE(derived.genreSuggestion(derived.result().tracks[0]), expected);
        const Derived copy = derived;
        QCOMPARE(copy.genreSuggestion(derived.result().tracks[1]), expected);
        QCOMPARE(copy.genreSuggestion(onDisk(u"B"_s)), std::optional<GenreSuggestion>());
    }
};

QTEST_APPLESS_MAIN(DerivedTest)
#include "derived_test.moc"
