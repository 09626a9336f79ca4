#include "analysis/library_counts.h"

#include "support/track_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

class LibraryCountsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noTracksGiveZeros() { QCOMPARE(countsOf({}), LibraryCounts()); }

    void oneTraitMovesItsOwnCountOnly_data()
    {
        QTest::addColumn<ScannedTrack>("track");
        QTest::addColumn<LibraryCounts>("expected");
        QTest::newRow("nothing, not on disk")
            << ScannedTrack(lost()) << LibraryCounts{.total = 1, .missing = 1};
        QTest::newRow("on disk, of 7 bytes")
            << ScannedTrack(onDisk().bytes(7))
            << LibraryCounts{.total = 1, .onDisk = 1, .onDiskBytes = 7};
        QTest::newRow("flagged but on disk counts twice")
            << ScannedTrack(onDisk().flaggedMissing())
            << LibraryCounts{.total = 1, .onDisk = 1, .missing = 1};
        QTest::newRow("bytes of a lost file")
            << ScannedTrack(lost().bytes(7)) << LibraryCounts{.total = 1, .missing = 1};
        QTest::newRow("markers") << ScannedTrack(lost().markers())
                                 << LibraryCounts{.total = 1, .missing = 1, .withMarkers = 1};
        QTest::newRow("grid") << ScannedTrack(lost().grid())
                              << LibraryCounts{.total = 1, .missing = 1, .withGrid = 1};
        QTest::newRow("gain") << ScannedTrack(lost().gain())
                              << LibraryCounts{.total = 1, .missing = 1, .withGain = 1};
        QTest::newRow("artist") << ScannedTrack(lost(u"A"_s))
                                << LibraryCounts{.total = 1, .missing = 1, .withArtist = 1};
        QTest::newRow("artist split from the title")
            << ScannedTrack(lost(u""_s, u"A - B"_s))
            << LibraryCounts{.total = 1, .missing = 1, .withArtist = 1};
        QTest::newRow("genre") << ScannedTrack(lost().genre(u"House"_s))
                               << LibraryCounts{.total = 1, .missing = 1, .withGenre = 1};
        QTest::newRow("blank genre")
            << ScannedTrack(lost().genre(u" \t"_s)) << LibraryCounts{.total = 1, .missing = 1};
        QTest::newRow("key") << ScannedTrack(lost().key(u"Am"_s))
                             << LibraryCounts{.total = 1, .missing = 1, .withKey = 1};
        QTest::newRow("tempo") << ScannedTrack(lost().bpm(u"120"_s))
                               << LibraryCounts{.total = 1, .missing = 1, .withBpm = 1};
        QTest::newRow("tempo of exactly 0")
            << ScannedTrack(lost().bpm(u"0"_s)) << LibraryCounts{.total = 1, .missing = 1};
        QTest::newRow("tags read") << ScannedTrack(lost().tagsRead())
                                   << LibraryCounts{.total = 1, .missing = 1, .tagsReadable = 1};
    }

    void oneTraitMovesItsOwnCountOnly()
    {
        QFETCH(ScannedTrack, track);
        QFETCH(LibraryCounts, expected);
        QCOMPARE(countsOf({track}), expected);
    }

    void bytesOfTheTracksOnDiskAddUp()
    {
        QCOMPARE(countsOf({onDisk().bytes(5), lost().bytes(100), onDisk().bytes(6)}).onDiskBytes,
                 quint64(11));
    }
};

QTEST_APPLESS_MAIN(LibraryCountsTest)
#include "library_counts_test.moc"
