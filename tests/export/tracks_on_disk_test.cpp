#include "export/tracks_on_disk.h"

#include "export/export_library.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class TracksOnDiskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersWhatIsOnDiskInLibraryOrder();
    void takesATrackThatSeratoFlagsAsMissing();
    void findsATrackByItsPathWithoutALeadingSlash_data();
    void findsATrackByItsPathWithoutALeadingSlash();
    void findsTheLaterOfTwoTracksWithOnePath();
    void findsNothingInAnEmptyLibrary();
    void findsEachOfManyTracks();
    void findsTheTracksOfACrateInItsOrder();
};

void TracksOnDiskTest::numbersWhatIsOnDiskInLibraryOrder()
{
    const std::vector<ScannedTrack> tracks = {onDisk(u"b"_s), missing(u"c"_s), onDisk(u"a"_s)};
    const TracksOnDisk found(tracks);
    QCOMPARE(found.count(), 2);
    QCOMPARE(found.track(1).relativePath, u"b"_s);
    QCOMPARE(found.track(2).relativePath, u"a"_s);
    QCOMPARE(found.numberOf(u"a"), 2);
    QCOMPARE(found.numberOf(u"c"), 0);
}

void TracksOnDiskTest::takesATrackThatSeratoFlagsAsMissing()
{
    ScannedTrack flagged = onDisk(u"a"_s);
    flagged.track.flaggedMissing = true;
    const std::vector<ScannedTrack> tracks = {flagged};
    QCOMPARE(TracksOnDisk(tracks).numberOf(u"a"), 1);
}

void TracksOnDiskTest::findsATrackByItsPathWithoutALeadingSlash_data()
{
    QTest::addColumn<QString>("relativePath");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("found");
    QTest::newRow("as it stands") << u"Music/a.mp3"_s << u"Music/a.mp3"_s << true;
    QTest::newRow("leading slash") << u"/Music/a.mp3"_s << u"Music/a.mp3"_s << true;
    QTest::newRow("two leading slashes") << u"//a.mp3"_s << u"/a.mp3"_s << true;
    QTest::newRow("empty") << u""_s << u""_s << true;
    QTest::newRow("a slash alone") << u"/"_s << u""_s << true;
    QTest::newRow("asked with a slash") << u"/a.mp3"_s << u"/a.mp3"_s << false;
    QTest::newRow("letter case") << u"a.mp3"_s << u"A.mp3"_s << false;
    QTest::newRow("composed and decomposed") << u"é.mp3"_s << u"e\u0301.mp3"_s << false;
}

void TracksOnDiskTest::findsATrackByItsPathWithoutALeadingSlash()
{
    QFETCH(QString, relativePath);
    QFETCH(QString, path);
    const std::vector<ScannedTrack> tracks = {onDisk(u"other"_s), onDisk(relativePath)};
    QTEST(TracksOnDisk(tracks).numberOf(path) == 2, "found");
}

void TracksOnDiskTest::findsTheLaterOfTwoTracksWithOnePath()
{
    const std::vector<ScannedTrack> tracks = {onDisk(u"/a"_s), onDisk(u"b"_s), onDisk(u"a"_s)};
    const TracksOnDisk found(tracks);
    QCOMPARE(found.count(), 3);
    QCOMPARE(found.pathCount(), 2);
    QCOMPARE(found.numberOf(u"a"), 3);
    QCOMPARE(found.numberOf(u"b"), 2);
}

void TracksOnDiskTest::findsNothingInAnEmptyLibrary()
{
    const std::vector<ScannedTrack> tracks = {missing(u"a"_s)};
    const TracksOnDisk found(tracks);
    QCOMPARE(found.count(), 0);
    QCOMPARE(found.pathCount(), 0);
    QCOMPARE(found.numberOf(u"a"), 0);
    QCOMPARE(found.numberOf(u""), 0);
}

void TracksOnDiskTest::findsEachOfManyTracks()
{
    const std::vector<ScannedTrack> tracks = tracksOnDisk(5000);
    const TracksOnDisk found(tracks);
    QCOMPARE(found.pathCount(), 5000);
    for (int number = 1; number <= found.count(); ++number)
        QCOMPARE(found.numberOf(found.track(number).relativePath), number);
    QCOMPARE(found.numberOf(u"Music/5001.mp3"), 0);
}

void TracksOnDiskTest::findsTheTracksOfACrateInItsOrder()
{
    const std::vector<ScannedTrack> tracks = {onDisk(u"a"_s), missing(u"b"_s), onDisk(u"c"_s)};
    const QStringList paths = {u"c"_s, u"b"_s, u"a"_s, u"unknown"_s, u"c"_s};
    QCOMPARE(TracksOnDisk(tracks).numbersOf(paths), (std::vector<int>{2, 1, 2}));
}

QTEST_APPLESS_MAIN(TracksOnDiskTest)
#include "tracks_on_disk_test.moc"
