#include "analysis/dimensions.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

using Kind = Dimension::Kind;

class DimensionsTest : public QObject
{
    Q_OBJECT

private:
    static Dimension dimension(Kind kind, const LibraryCounts &counts)
    {
        return dimensionsOf(counts).at(int(kind));
    }

private Q_SLOTS:
    void textsOfTheKinds()
    {
        QStringList texts;
        for (const Dimension &dimension : dimensionsOf({}))
            texts << dimension.id();
        QCOMPARE(texts, (QStringList{u"Files & links"_s, u"Cues & grids"_s, u"Duplicates"_s,
                                     u"Tags & genres"_s, u"Levels"_s, u"Export parity"_s}));
    }

    void anEmptyLibraryScoresFull()
    {
        const QList<Dimension> expected = {
            {Kind::FilesLinks, 100, u"Every file is where Serato expects it"_s, u"Missing files"_s},
            {Kind::CuesGrids, 100, u"0 of 0 analysed files carry a beat grid"_s, u"Cues & grids"_s},
            {Kind::Duplicates, 100, u"No obvious duplicate copies"_s, u"Duplicates"_s},
            {Kind::TagsGenres, 100, u"0 tracks have no genre"_s, u"Track ID"_s},
            {Kind::Levels, 100, u"0 of 0 analysed files have a loudness tag"_s, u"Loudness"_s},
            {Kind::ExportParity, 100, u"0 keyed · 0 with BPM — carries to Engine / rekordbox"_s,
             u"USB & export"_s},
        };
        QCOMPARE(dimensionsOf({}), expected);
        QCOMPARE(overallScore(expected), 100);
    }

    void scoreAndDetail_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<LibraryCounts>("counts");
        QTest::addColumn<int>("score");
        QTest::addColumn<QString>("detail");

        QTest::newRow("one missing")
            << Kind::FilesLinks << LibraryCounts{.total = 3, .onDisk = 2, .missing = 1} << 67
            << u"1 file can't be found"_s;
        QTest::newRow("two missing")
            << Kind::FilesLinks << LibraryCounts{.total = 3, .onDisk = 1, .missing = 2} << 33
            << u"2 files can't be found"_s;
        QTest::newRow("a flag shows in the text, not in the score")
            << Kind::FilesLinks << LibraryCounts{.total = 2, .onDisk = 2, .missing = 1} << 100
            << u"1 file can't be found"_s;
        QTest::newRow("half a per cent rounds up")
            << Kind::FilesLinks << LibraryCounts{.total = 200, .onDisk = 1} << 1
            << u"Every file is where Serato expects it"_s;

        QTest::newRow("grids of the analysed")
            << Kind::CuesGrids
            << LibraryCounts{.total = 9, .withMarkers = 4, .withGrid = 1, .tagsReadable = 4} << 25
            << u"1 of 4 analysed files carry a beat grid"_s;
        QTest::newRow("nothing analysed, no grids")
            << Kind::CuesGrids << LibraryCounts{.total = 9} << 100
            << u"0 of 0 analysed files carry a beat grid"_s;

        QTest::newRow("one copy") << Kind::Duplicates
                                  << LibraryCounts{.total = 4,
                                                   .duplicateExcess = 1,
                                                   .reclaimableBytes = 5'000'000}
                                  << 75 << u"1 redundant copy · 5 MB reclaimable"_s;
        QTest::newRow("two copies of nothing")
            << Kind::Duplicates << LibraryCounts{.total = 4, .duplicateExcess = 2} << 50
            << u"2 redundant copies · 0 MB reclaimable"_s;

        QTest::newRow("artists and genres weigh the same")
            << Kind::TagsGenres << LibraryCounts{.total = 2, .withArtist = 2, .withGenre = 1} << 75
            << u"1 track has no genre"_s;
        QTest::newRow("no artists, no genres")
            << Kind::TagsGenres << LibraryCounts{.total = 2} << 0 << u"2 tracks have no genre"_s;

        QTest::newRow("levels of the analysed")
            << Kind::Levels << LibraryCounts{.total = 9, .withGain = 2, .tagsReadable = 3} << 67
            << u"2 of 3 analysed files have a loudness tag"_s;
        QTest::newRow("nothing analysed, no levels")
            << Kind::Levels << LibraryCounts{.total = 9} << 100
            << u"0 of 0 analysed files have a loudness tag"_s;

        QTest::newRow("keys and tempos weigh the same")
            << Kind::ExportParity << LibraryCounts{.total = 4, .withKey = 1, .withBpm = 3} << 50
            << u"1 keyed · 3 with BPM — carries to Engine / rekordbox"_s;
        QTest::newRow("more tempos than tracks weigh no more than all")
            << Kind::ExportParity << LibraryCounts{.total = 2, .withBpm = 5} << 50
            << u"0 keyed · 5 with BPM — carries to Engine / rekordbox"_s;
    }

    void scoreAndDetail()
    {
        QFETCH(Kind, kind);
        QFETCH(LibraryCounts, counts);
        const Dimension found = dimension(kind, counts);
        QCOMPARE(found.kind, kind);
        QTEST(found.score, "score");
        QTEST(found.detail, "detail");
    }

    void overallScoreIsTheRoundedMean_data()
    {
        QTest::addColumn<QList<int>>("scores");
        QTest::addColumn<int>("expected");
        QTest::newRow("a half rounds up") << QList<int>{3, 0, 0, 0, 0, 0} << 1;
        QTest::newRow("below a half") << QList<int>{2, 0, 0, 0, 0, 0} << 0;
        QTest::newRow("all weigh the same") << QList<int>{0, 10, 20, 30, 40, 50} << 25;
        QTest::newRow("full") << QList<int>{100, 100, 100, 100, 100, 100} << 100;
    }

    void overallScoreIsTheRoundedMean()
    {
        QFETCH(QList<int>, scores);
        QList<Dimension> dimensions;
        for (const int score : scores)
            dimensions << Dimension{Kind::Levels, score, {}, {}};
        QTEST(overallScore(dimensions), "expected");
    }

    void grades_data()
    {
        QTest::addColumn<QString>("grade");
        QTest::newRow("100") << u"This library is gig-ready."_s;
        QTest::newRow("90") << u"This library is gig-ready."_s;
        QTest::newRow("89") << u"Solid. A few fixes from spotless."_s;
        QTest::newRow("75") << u"Solid. A few fixes from spotless."_s;
        QTest::newRow("74") << u"Playable, but it needs a clean."_s;
        QTest::newRow("55") << u"Playable, but it needs a clean."_s;
        QTest::newRow("54") << u"Rough. Let's fix the big things first."_s;
        QTest::newRow("35") << u"Rough. Let's fix the big things first."_s;
        QTest::newRow("34") << u"Needs work before the next set."_s;
        QTest::newRow("0") << u"Needs work before the next set."_s;
    }

    void grades() { QTEST(gradeOf(QByteArray(QTest::currentDataTag()).toInt()), "grade"); }

    void minutes_data()
    {
        QTest::addColumn<LibraryCounts>("counts");
        QTest::addColumn<int>("minutes");
        QTest::newRow("nothing to do is a minute") << LibraryCounts() << 1;
        QTest::newRow("2 without genre: 0.4, lifted to 1") << LibraryCounts{.total = 2} << 1;
        QTest::newRow("3 without genre: 0.6") << LibraryCounts{.total = 3} << 1;
        QTest::newRow("7 without genre: 1.4") << LibraryCounts{.total = 7} << 1;
        QTest::newRow("8 without genre: 1.6") << LibraryCounts{.total = 8} << 2;
        QTest::newRow("a minute for each missing file")
            << LibraryCounts{.total = 4, .missing = 4, .withGenre = 4} << 4;
        QTest::newRow("a minute for each redundant copy")
            << LibraryCounts{.total = 4, .withGenre = 4, .duplicateExcess = 2} << 2;
        QTest::newRow("all of it")
            << LibraryCounts{.total = 10, .missing = 4, .duplicateExcess = 3} << 9;
        QTest::newRow("more genres than tracks don't save time")
            << LibraryCounts{.total = 0, .missing = 3, .withGenre = 10} << 3;
    }

    void minutes()
    {
        QFETCH(LibraryCounts, counts);
        QTEST(estimatedMinutesOf(counts), "minutes");
    }
};

QTEST_APPLESS_MAIN(DimensionsTest)
#include "dimensions_test.moc"
