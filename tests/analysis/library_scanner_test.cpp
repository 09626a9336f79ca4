#include "analysis/library_scanner.h"

#include "platform/clock.h"
#include "platform/fault_gate.h"
#include "support/library_builder.h"

#include <QTest>

#include <cerrno>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;
using LibraryScanner::ReadTags;

namespace {

const QString readingPhase = u"Reading database…"_s;
const QString checkingPhase = u"Checking files and cues…"_s;
const QString scoringPhase = u"Scoring…"_s;

/// A file that begins with an ID3v2 tag of this body.
QByteArray tagged(const QByteArray &body)
{
    return hex("494433 0300 00 0000") + char(body.size() >> 7) + char(body.size() & 0x7F) + body;
}

QByteArray analysisTag(const QByteArray &gain)
{
    return tagged("Serato Autotags" + hex("00 0101") + "120.00" + hex("00") + gain + hex("00"));
}

QList<ScanProgress> reportsOf(const SeratoLibrary::Location &location, ReadTags readTags)
{
    QList<ScanProgress> reports;
    const auto result = LibraryScanner::scan(
        location, readTags, [&](const ScanProgress &progress) { reports << progress; });
    Q_UNUSED(result);
    return reports;
}

ScanResult scanOf(const SeratoLibrary::Location &location, ReadTags readTags = ReadTags::Yes)
{
    auto result = LibraryScanner::scan(location, readTags, [](const ScanProgress &) {});
    if (!result)
        qFatal("the scan failed");
    return *result;
}

/// Of a library with one file, or none at all.
ScannedTrack onlyTrackOf(const LibraryBuilder &library, ReadTags readTags = ReadTags::Yes)
{
    const ScanResult result = scanOf(library.write(), readTags);
    return result.total() == 1 ? result.tracks.front() : ScannedTrack();
}

} // namespace

class LibraryScannerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resultTellsLibraryTimeAndTracksInDatabaseOrder();
    void theTimeOfAScanIsThatOfItsEnd();
    void missingDatabaseFailsAfterTheFirstReport();
    void damagedDatabaseIsScannedUpToTheDamage();
    void progressIsThinned_data();
    void progressIsThinned();
    void progressCountsByTheDiskAlone();
    void fractionOfNothingIsZero();
    void whatIsNotFoundKeepsTheDatabasesSize_data();
    void whatIsNotFoundKeepsTheDatabasesSize();
    void foundFileTellsItsOwnSize_data();
    void foundFileTellsItsOwnSize();
    void linkCountsAsWhatItLeadsTo();
    void flaggedTrackIsMissingThoughItsFileIsThere();
    void tagsOfAFileAreCopied();
    void gainThatIsNoNumberCountsAsAbsent_data();
    void gainThatIsNoNumberCountsAsAbsent();
    void fileWithoutReadableTagsStaysFound_data();
    void fileWithoutReadableTagsStaysFound();
    void fileThatCannotBeOpenedStaysFound();
    void withoutTagsNoAudioFileIsOpened();
    void tracksKeepTheirIdentity();
};

void LibraryScannerTest::resultTellsLibraryTimeAndTracksInDatabaseOrder()
{
    const platform::ScopedClock clock(QDateTime({2026, 11, 20}, {14, 5}, Qt::UTC));
    LibraryBuilder library;
    library.addTrack(u"/nowhere/b.mp3"_s);
    library.addFile(u"a.mp3"_s, "x");
    library.addTrack(u"/nowhere/b.mp3"_s);
    const ScanResult result = scanOf(library.write());
    QCOMPARE(result.location, library.location());
    QCOMPARE(result.scannedAt, platform::now());
    QCOMPARE(result.total(), 3);
    QCOMPARE(result.tracks[0].track.relativePath, u"nowhere/b.mp3"_s);
    QCOMPARE(result.tracks[1].track.absolutePath(), library.folder().path(u"a.mp3"_s));
    QCOMPARE(result.tracks[2].track.relativePath, u"nowhere/b.mp3"_s);
}

void LibraryScannerTest::theTimeOfAScanIsThatOfItsEnd()
{
    const QDateTime begin({2026, 11, 20}, {14, 5}, Qt::UTC);
    platform::ScopedClock clock(begin);
    LibraryBuilder library;
    library.addTrack(u"/nowhere/a.mp3"_s);
    const auto aMinutePasses = [&](const ScanProgress &) {
        clock.set(platform::now().addSecs(60));
    };
    const auto result = LibraryScanner::scan(library.write(), ReadTags::Yes, aMinutePasses);
    QVERIFY(result);
    QCOMPARE(result->scannedAt, begin.addSecs(4 * 60)); // reports: database, two of files, scoring
}

void LibraryScannerTest::missingDatabaseFailsAfterTheFirstReport()
{
    const LibraryBuilder library;
    const auto ignore = [](const ScanProgress &) {};
    const auto result = LibraryScanner::scan(library.location(), ReadTags::Yes, ignore);
    QVERIFY(!result);
    QCOMPARE(result.error().message,
             u"The file “database V2” couldn't be opened: No such file or directory."_s);
    QCOMPARE(reportsOf(library.location(), ReadTags::Yes),
             QList<ScanProgress>({{readingPhase, 0, 0, 0, 0}}));
}

void LibraryScannerTest::damagedDatabaseIsScannedUpToTheDamage()
{
    LibraryBuilder library;
    library.addTrack(u"/a.mp3"_s);
    library.addRecord(hex("6f74726b ffffffff"));
    library.addTrack(u"/b.mp3"_s);
    QCOMPARE(scanOf(library.write()).total(), 1);
}

void LibraryScannerTest::progressIsThinned_data()
{
    QTest::addColumn<int>("tracks");
    QTest::addColumn<QList<int>>("processed");
    QTest::newRow("0 tracks") << 0 << QList<int>{};
    QTest::newRow("1 track") << 1 << QList<int>{1};
    QTest::newRow("24 tracks") << 24 << QList<int>{24};
    QTest::newRow("25 tracks") << 25 << QList<int>{25};
    QTest::newRow("26 tracks") << 26 << QList<int>{25, 26};
    QTest::newRow("60 tracks") << 60 << QList<int>{25, 50, 60};
}

void LibraryScannerTest::progressIsThinned()
{
    QFETCH(const int, tracks);
    QFETCH(const QList<int>, processed);
    LibraryBuilder library;
    for (int i = 0; i < tracks; ++i)
        library.addTrack(u"/nowhere/%1.mp3"_s.arg(i));
    QList<ScanProgress> expected = {{readingPhase, 0, 0, 0, 0}, {checkingPhase, 0, tracks, 0, 0}};
    for (const int done : processed)
        expected.append({checkingPhase, done, tracks, 0, done});
    expected.append({scoringPhase, tracks, tracks, 0, tracks});
    if (tracks == 0)
        QCOMPARE(expected.size(), 3);
    QCOMPARE(reportsOf(library.write(), ReadTags::Yes), expected);
}

void LibraryScannerTest::progressCountsByTheDiskAlone()
{
    LibraryBuilder library;
    library.addFile(u"a.mp3"_s, "x", {flagRecord("bmis", true)});
    library.addFile(u"b.mp3"_s, "x");
    library.addTrack(u"/nowhere/c.mp3"_s);
    const QList<ScanProgress> reports = reportsOf(library.write(), ReadTags::No);
    QCOMPARE(reports.last(), ScanProgress({scoringPhase, 3, 3, 2, 1}));
}

void LibraryScannerTest::fractionOfNothingIsZero()
{
    QCOMPARE(ScanProgress().fraction(), 0.0);
    QCOMPARE(ScanProgress({checkingPhase, 25, 100}).fraction(), 0.25);
}

void LibraryScannerTest::whatIsNotFoundKeepsTheDatabasesSize_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing there") << u"nowhere.mp3"_s;
    QTest::newRow("folder") << u"folder.mp3"_s;
    QTest::newRow("pipe") << u"pipe.mp3"_s;
    QTest::newRow("dangling link") << u"link.mp3"_s;
    QTest::newRow("slash at the end") << u"file.mp3/"_s;
    QTest::newRow("below a file") << u"file.mp3/a.mp3"_s;
    QTest::newRow("NUL in the path") << u"file.mp3"_s + QChar::Null;
    QTest::newRow("name past all limits") << QString(300, u'a');
    QTest::newRow("path past all limits") << u"a/"_s.repeated(4000) + u"a.mp3"_s;
}

void LibraryScannerTest::whatIsNotFoundKeepsTheDatabasesSize()
{
    QFETCH(const QString, path);
    LibraryBuilder library;
    library.folder().write(u"file.mp3"_s, tagged("Serato Markers2"));
    library.folder().makeFolder(u"folder.mp3"_s);
    QVERIFY(QFile::link(u"/nowhere"_s, library.folder().path(u"link.mp3"_s)));
    const QByteArray pipe = library.folder().path(u"pipe.mp3"_s).toUtf8();
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    library.addTrack(library.folder().path() + u'/' + path, {numberRecord("ufsb", 4711)});
    const ScannedTrack track = onlyTrackOf(library);
    ScannedTrack expected{track.track};
    expected.onDiskSizeBytes = 4711;
    QCOMPARE(track, expected);
    QVERIFY(track.isMissing());
}

void LibraryScannerTest::foundFileTellsItsOwnSize_data()
{
    QTest::addColumn<ReadTags>("readTags");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("5 bytes") << ReadTags::Yes << QByteArray("audio");
    QTest::newRow("0 bytes") << ReadTags::Yes << QByteArray();
    QTest::newRow("5 bytes, tags left alone") << ReadTags::No << QByteArray("audio");
}

void LibraryScannerTest::foundFileTellsItsOwnSize()
{
    QFETCH(const ReadTags, readTags);
    QFETCH(const QByteArray, content);
    LibraryBuilder library;
    library.addFile(u"Größe 50%.mp3"_s, content, {numberRecord("ufsb", 4711)});
    const ScannedTrack track = onlyTrackOf(library, readTags);
    QVERIFY(track.existsOnDisk);
    QVERIFY(!track.isMissing());
    QCOMPARE(track.onDiskSizeBytes, quint64(content.size()));
    QCOMPARE(track.track.fileSizeBytes, 4711);
}

void LibraryScannerTest::linkCountsAsWhatItLeadsTo()
{
    LibraryBuilder library;
    const QString file = library.folder().write(u"file.mp3"_s, tagged("Serato Markers2"));
    QVERIFY(QFile::link(file, library.folder().path(u"link.mp3"_s)));
    library.addTrack(library.folder().path(u"link.mp3"_s));
    const ScannedTrack track = onlyTrackOf(library);
    QVERIFY(track.existsOnDisk);
    QVERIFY(track.hasMarkers);
    QCOMPARE(track.onDiskSizeBytes, 25);
}

void LibraryScannerTest::flaggedTrackIsMissingThoughItsFileIsThere()
{
    LibraryBuilder library;
    library.addFile(u"a.mp3"_s, "x", {flagRecord("bmis", true)});
    const ScannedTrack track = onlyTrackOf(library);
    QVERIFY(track.existsOnDisk);
    QVERIFY(track.isMissing());
}

void LibraryScannerTest::tagsOfAFileAreCopied()
{
    LibraryBuilder library;
    library.addFile(u"all.mp3"_s, analysisTag("-3.5") + "outside the tag: Serato Markers2");
    library.addFile(u"markers.MP3"_s, tagged("Serato Markers2 Serato BeatGrid REPLAYGAIN"));
    const ScanResult result = scanOf(library.write());
    const ScannedTrack &gain = result.tracks.at(0);
    QVERIFY(gain.tagsRead && gain.hasGain && !gain.hasReplayGain);
    QVERIFY(!gain.hasMarkers && !gain.hasBeatGrid);
    QCOMPARE(gain.autogain, std::optional(-3.5));
    const ScannedTrack &markers = result.tracks.at(1);
    QVERIFY(markers.tagsRead && markers.hasMarkers && markers.hasBeatGrid);
    QVERIFY(markers.hasGain && markers.hasReplayGain);
    QCOMPARE(markers.autogain, std::optional<double>());
}

void LibraryScannerTest::gainThatIsNoNumberCountsAsAbsent_data()
{
    QTest::addColumn<QByteArray>("gain");
    QTest::newRow("nan") << QByteArray("nan");
    QTest::newRow("inf") << QByteArray("inf");
    QTest::newRow("-inf") << QByteArray("-inf");
    QTest::newRow("past a double") << QByteArray("1e999");
    QTest::newRow("letters") << QByteArray("loud");
}

void LibraryScannerTest::gainThatIsNoNumberCountsAsAbsent()
{
    QFETCH(const QByteArray, gain);
    LibraryBuilder library;
    library.addFile(u"a.mp3"_s, analysisTag(gain));
    const ScannedTrack track = onlyTrackOf(library);
    QCOMPARE(track.autogain, std::optional<double>());
    QVERIFY(track.hasGain);
    QVERIFY(track.tagsRead);
}

void LibraryScannerTest::fileWithoutReadableTagsStaysFound_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no tag") << u"a.mp3"_s << QByteArray("audio without a tag");
    QTest::newRow("empty file") << u"a.mp3"_s << QByteArray();
    QTest::newRow("type that isn't probed") << u"a.flac"_s << tagged("Serato Markers2");
    QTest::newRow("no extension") << u"mp3"_s << tagged("Serato Markers2");
}

void LibraryScannerTest::fileWithoutReadableTagsStaysFound()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    LibraryBuilder library;
    library.addFile(name, content);
    const ScannedTrack track = onlyTrackOf(library);
    ScannedTrack expected{track.track};
    expected.existsOnDisk = true;
    expected.onDiskSizeBytes = quint64(content.size());
    QCOMPARE(track, expected);
}

void LibraryScannerTest::fileThatCannotBeOpenedStaysFound()
{
    LibraryBuilder library;
    const QString file = library.addFile(u"a.mp3"_s, tagged("Serato Markers2"));
    const platform::ScopedFaults faults(
        [=](platform::FileOperation operation, const QString &path) {
            return operation == platform::FileOperation::Open && path == file ? EACCES : 0;
        });
    const ScannedTrack track = onlyTrackOf(library);
    QVERIFY(track.existsOnDisk);
    QCOMPARE(track.onDiskSizeBytes, 25);
    QVERIFY(!track.tagsRead);
    QVERIFY(!track.hasMarkers);
}

void LibraryScannerTest::withoutTagsNoAudioFileIsOpened()
{
    LibraryBuilder library;
    library.addFile(u"a.mp3"_s, tagged("Serato Markers2"));
    const SeratoLibrary::Location location = library.write();
    QStringList opened;
    const platform::ScopedFaults faults(
        [&](platform::FileOperation operation, const QString &path) {
            if (operation == platform::FileOperation::Open)
                opened << path;
            return 0;
        });
    const ScanResult result = scanOf(location, ReadTags::No);
    QCOMPARE(opened, QStringList{location.databasePath()});
    QVERIFY(result.tracks.front().existsOnDisk);
    QCOMPARE(result.tracks.front().onDiskSizeBytes, 25);
    QVERIFY(!result.tracks.front().tagsRead);
}

void LibraryScannerTest::tracksKeepTheirIdentity()
{
    LibraryBuilder library;
    library.addTrack(u"/a.mp3"_s);
    library.addTrack(u"/a.mp3"_s);
    const ScanResult result = scanOf(library.write());
    QCOMPARE(result.tracks[0].id(), result.tracks[0].track.id);
    QVERIFY(result.tracks[0].id() != result.tracks[1].id());
}

QTEST_GUILESS_MAIN(LibraryScannerTest)
#include "library_scanner_test.moc"
