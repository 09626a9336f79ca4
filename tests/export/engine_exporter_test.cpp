#include "export/engine_exporter.h"

#include "export/engine_error.h"
#include "export/failing_sqlite.h"
#include "export/small_library.h"
#include "support/memory_folder.h"
#include "support/power_cut.h"
#include "support/sqlite_behind_gate.h"
#include "support/sqlite_reader.h"
#include "support/test_folder.h"
#include "support/tiny_disk.h"

#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString folderName = u"Engine Library/Database2"_s;
const QString fileName = u"Engine Library/Database2/m.db"_s;

QSet<QString> pathsOf(const std::vector<ScannedTrack> &tracks)
{
    QSet<QString> paths;
    for (const ScannedTrack &scanned : tracks) {
        if (scanned.existsOnDisk)
            paths.insert(scanned.track.absolutePath());
    }
    return paths;
}

} // namespace

class EngineExporterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { keepTemporaryFoldersInMemory(); }
    void init() { m_folder = std::make_unique<TestFolder>(); }
    void writesTheTracksThatAreOnDisk();
    void writesEachCrateWithAnEntryAsAPlaylist();
    void countsTheEntriesOfAPlaylistWithoutGaps();
    void tellsWhatItHasWritten();
    void writesPlaylistsWithoutEntriesWhereNoTrackIsOnDisk();
    void reportsItsProgress_data();
    void reportsItsProgress();
    void replacesAnEarlierExport();
    void outlastsAPowerCutOnceItIsTold_data();
    void outlastsAPowerCutOnceItIsTold();
    void leavesItsNeighboursAlone();
    void replacesADamagedExport_data();
    void replacesADamagedExport();
    void failsWhereTheFolderCannotBeMade();
    void failsWhereAFolderHasTheNameOfTheFile();
    void failsWhereTheEarlierExportCannotBeRemoved();
    void leavesNoHalfOfALibraryOnAFullDevice();
    void stopsAtTheFirstRowThatDoesNotFit();
    void failsOnAFullDevice();
    void readsBackWhatItWrites();
    void readsNothingOfWhatIsNoDatabase_data();
    void readsNothingOfWhatIsNoDatabase();
    void readsWhatItCanOfADamagedDatabase();

private:
    Result<ExportOutcome> exportSmallLibrary() const
    {
        return EngineExporter::exportTo(smallLibrary(), smallCrates(), m_folder->path(),
                                        ignoreProgress);
    }
    QString databasePath() const { return m_folder->path(fileName); }
    QStringList rows(const char *sql) const { return rowsOf(databasePath(), sql); }

    std::unique_ptr<TestFolder> m_folder;
};

void EngineExporterTest::writesTheTracksThatAreOnDisk()
{
    QVERIFY(exportSmallLibrary());
    const QStringList expected = {
        u"1|/Users/x/Music/Sol & Luna.mp3|Sol & Luna.mp3|Sol & Luna|Ana \"Ñ\"|It's <on>|"
        "Drum & Bass|263|174.5|320000|mp3|1|1"_s,
        u"2|/Volumes/USB/a+b 100%.wav|a+b 100%.wav|Night - Drive|Ben|||60|0.0|0|wav|1|1"_s,
        u"3|/Users/x/Music/line\nbreak.mp3|line\nbreak.mp3|two\nlines|O'Brien|||0|0.0|0||1|1"_s,
        u"4|/Users/x/Music/🎧 mix.mp3|🎧 mix.mp3|漢字|DJ 🎧|||0|0.0|0||1|1"_s,
        u"5|/Users/x/Music/%1|%1|%1|Longest|||0|0.0|0||1|1"_s.arg(longestName()),
        u"6|/Users/x/Music/twice.mp3|twice.mp3|earlier|Twice|||0|0.0|0||1|1"_s,
        u"7|/Users/x/Music/twice.mp3|twice.mp3|later|Twice|||0|0.0|0||1|1"_s,
    };
    QCOMPARE(rows("SELECT id, path, filename, title, artist, album, genre, length, bpm, bitrate,"
                  " fileType, isAvailable, isAnalyzed FROM Track ORDER BY id"),
             expected);
    QCOMPARE(rows("PRAGMA integrity_check"), QStringList{u"ok"_s});
}

void EngineExporterTest::writesEachCrateWithAnEntryAsAPlaylist()
{
    QVERIFY(exportSmallLibrary());
    const QStringList playlists = {u"1|Don't \"stop\" & <go> 🎧|0"_s, u"2|Gone|0"_s,
                                   u"3|Warm up|0"_s};
    QCOMPARE(rows("SELECT id, title, parentListId FROM Playlist ORDER BY id"), playlists);
    const QStringList entries = {u"1|1|7||0|1"_s, u"2|1|1||0|2"_s, u"3|1|7||0|3"_s,
                                 u"4|3|2||0|1"_s};
    QCOMPARE(rows("SELECT id, listId, trackId, databaseUuid, nextEntityId, membershipReference"
                  " FROM PlaylistEntity ORDER BY id"),
             entries);
}

void EngineExporterTest::countsTheEntriesOfAPlaylistWithoutGaps()
{
    const std::vector<ScannedTrack> tracks = {onDisk(u"a"_s), missing(u"b"_s), onDisk(u"c"_s),
                                              onDisk(u"/d"_s)};
    const QList<LoadedCrate> crates = {crate(u"A"_s, {u"d"_s, u"b"_s, u"a"_s, u"x"_s, u"c"_s})};
    QVERIFY(EngineExporter::exportTo(tracks, crates, m_folder->path(), ignoreProgress));
    const QStringList expected = {u"3|1"_s, u"1|2"_s, u"2|3"_s};
    QCOMPARE(rows("SELECT trackId, membershipReference FROM PlaylistEntity ORDER BY id"), expected);
}

void EngineExporterTest::tellsWhatItHasWritten()
{
    const Result<ExportOutcome> outcome = exportSmallLibrary();
    QVERIFY(outcome);
    QCOMPARE(outcome->target, ExportTarget::Engine);
    QCOMPARE(outcome->path, databasePath());
    QCOMPARE(outcome->trackCount, 7);
    QCOMPARE(outcome->crateCount, 3);
    QCOMPARE(m_folder->names(folderName), QStringList{u"m.db"_s}); // no journal stays behind
}

void EngineExporterTest::writesPlaylistsWithoutEntriesWhereNoTrackIsOnDisk()
{
    const auto outcome = EngineExporter::exportTo({missing(u"a"_s)}, {crate(u"A"_s, {u"a"_s})},
                                                  m_folder->path(), ignoreProgress);
    QVERIFY(outcome);
    QCOMPARE(outcome->trackCount, 0);
    QCOMPARE(outcome->crateCount, 1);
    QCOMPARE(rows("SELECT (SELECT count(*) FROM Information), (SELECT count(*) FROM Track),"
                  " (SELECT group_concat(title) FROM Playlist),"
                  " (SELECT count(*) FROM PlaylistEntity)"),
             QStringList{u"1|0|A|0"_s});
}

void EngineExporterTest::reportsItsProgress_data()
{
    const QString tracks = u"Creating Engine library… "_s;
    const QString crates = u"Writing crates… "_s;
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("reports");
    QTest::newRow("no track") << 0 << QStringList{tracks + u"0/0"_s, crates + u"0/0"_s};
    QTest::newRow("49 tracks") << 49 << QStringList{tracks + u"0/49"_s, crates + u"49/49"_s};
    QTest::newRow("50 tracks") << 50
                               << QStringList{tracks + u"0/50"_s, tracks + u"50/50"_s,
                                              crates + u"50/50"_s};
    QTest::newRow("120 tracks") << 120
                                << QStringList{tracks + u"0/120"_s, tracks + u"50/120"_s,
                                               tracks + u"100/120"_s, crates + u"120/120"_s};
}

void EngineExporterTest::reportsItsProgress()
{
    QFETCH(int, count);
    std::vector<ScannedTrack> tracks = tracksOnDisk(count);
    tracks.insert(tracks.begin(), missing(u"gone"_s)); // counts for nothing
    ProgressLog log;
    QVERIFY(EngineExporter::exportTo(tracks, {}, m_folder->path(), log.function()));
    QTEST(log.reports, "reports");
}

void EngineExporterTest::replacesAnEarlierExport()
{
    QVERIFY(exportSmallLibrary());
    const QStringList earlier = rows("SELECT uuid FROM Information");
    const std::vector<ScannedTrack> tracks = {onDisk(u"new.mp3"_s)};
    QVERIFY(EngineExporter::exportTo(tracks, {}, m_folder->path(), ignoreProgress));
    QCOMPARE(rows("SELECT path FROM Track"), QStringList{u"/new.mp3"_s});
    QCOMPARE(rows("SELECT * FROM Playlist"), QStringList{});
    QVERIFY(rows("SELECT uuid FROM Information") != earlier);
}

void EngineExporterTest::outlastsAPowerCutOnceItIsTold_data()
{
    QTest::addColumn<int>("loss");
    for (const Loss loss : allLosses())
        QTest::addRow("%d", int(loss)) << int(loss);
}

void EngineExporterTest::outlastsAPowerCutOnceItIsTold()
{
    QFETCH(int, loss);
    const SqliteBehindGate gate;
    FlushWatch watch(m_folder->path());
    const platform::ScopedFaults faults(
        [&](platform::FileOperation operation, const QString &path) {
            watch.note(operation, path);
            return 0;
        });
    QVERIFY(exportSmallLibrary());
    const QStringList paths = rows("SELECT path FROM Track");
    QVERIFY(!paths.isEmpty());
    loseUnflushed(m_folder->path(), watch.unflushed(), Loss(loss));
    QCOMPARE(rows("SELECT path FROM Track"), paths);
}

void EngineExporterTest::leavesItsNeighboursAlone()
{
    m_folder->write(u"Engine Library/Database2/p.db"_s, "another database");
    m_folder->write(u"Engine Library/Music/a.mp3"_s, "music");
    QVERIFY(exportSmallLibrary());
    QCOMPARE(m_folder->read(u"Engine Library/Database2/p.db"_s), QByteArray("another database"));
    QCOMPARE(m_folder->read(u"Engine Library/Music/a.mp3"_s), QByteArray("music"));
}

void EngineExporterTest::replacesADamagedExport_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no database") << fileName << QByteArray("not a database at all");
    QTest::newRow("empty file") << fileName << QByteArray();
    QTest::newRow("header alone") << fileName << QByteArray("SQLite format 3\0", 16);
    QTest::newRow("journal that was left behind")
        << fileName + u"-journal"_s
        << QByteArray("\xD9\xD5\x05\xF9\x20\xA1\x63\xD7") + QByteArray(1016, '\1');
    QTest::newRow("write-ahead log that was left behind")
        << fileName + u"-wal"_s << QByteArray(4096, '\1');
}

void EngineExporterTest::replacesADamagedExport()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    m_folder->write(name, content);
    QVERIFY(exportSmallLibrary());
    QCOMPARE(rows("PRAGMA integrity_check"), QStringList{u"ok"_s});
    QCOMPARE(EngineExporter::readPaths(databasePath()), pathsOf(smallLibrary()));
}

void EngineExporterTest::failsWhereTheFolderCannotBeMade()
{
    m_folder->write(u"Engine Library"_s, "a file");
    ProgressLog log;
    const auto outcome =
        EngineExporter::exportTo(smallLibrary(), {}, m_folder->path(), log.function());
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"The file “Database2” couldn't be created: Not a directory."_s);
    QCOMPARE(log.reports, QStringList{u"Creating Engine library… 0/7"_s});
    QCOMPARE(m_folder->read(u"Engine Library"_s), QByteArray("a file"));
}

void EngineExporterTest::failsWhereAFolderHasTheNameOfTheFile()
{
    m_folder->write(fileName + u"/kept"_s, "kept");
    const auto outcome = exportSmallLibrary();
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message,
             u"Couldn't create Engine database: unable to open database file"_s);
    QCOMPARE(m_folder->read(fileName + u"/kept"_s), QByteArray("kept"));
}

void EngineExporterTest::failsWhereTheEarlierExportCannotBeRemoved()
{
    QVERIFY(exportSmallLibrary());
    const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::Remove ? EACCES : 0;
    });
    const auto outcome = exportSmallLibrary();
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message, u"Engine write failed: table Information already exists"_s);
    QCOMPARE(EngineExporter::readPaths(databasePath()), pathsOf(smallLibrary()));
}

void EngineExporterTest::leavesNoHalfOfALibraryOnAFullDevice()
{
    QStringList messages;
    for (int firstFailing = 1;; ++firstFailing) {
        const FullDeviceForSqlite device(firstFailing);
        const auto outcome = exportSmallLibrary();
        if (device.writes() < firstFailing)
            break;
        QVERIFY(!outcome);
        messages.append(outcome.error().message);
        const FullDeviceForSqlite working(std::numeric_limits<int>::max());
        QCOMPARE(rows("PRAGMA integrity_check"), QStringList{u"ok"_s});
        QCOMPARE(EngineExporter::readPaths(databasePath()), QSet<QString>());
    }
    QVERIFY(messages.size() > 10);
    messages.removeDuplicates();
    QCOMPARE(messages, QStringList{u"Engine write failed: database or disk is full"_s});
    QCOMPARE(EngineExporter::readPaths(databasePath()), pathsOf(smallLibrary()));
}

void EngineExporterTest::stopsAtTheFirstRowThatDoesNotFit()
{
    // Too much for SQLite to keep in memory until the commit.
    std::vector<ScannedTrack> tracks = tracksOnDisk(2500);
    for (ScannedTrack &scanned : tracks)
        scanned.track.album = QString(30'000, u'x');
    const QList<LoadedCrate> crates = {crate(u"A"_s, {u"Music/1.mp3"_s})};
    ProgressLog log;
    const auto run = [&] {
        log.reports.clear();
        return EngineExporter::exportTo(tracks, crates, m_folder->path(), log.function());
    };
    const int writes = [&] {
        const FullDeviceForSqlite counting(std::numeric_limits<int>::max());
        return run() ? counting.writes() : 0;
    }();
    QVERIFY(writes > 10'000);
    for (const int failing : {200, writes / 2, writes - 5}) {
        const auto outcome = [&] {
            const FullDeviceForSqlite device(failing, 1);
            return run();
        }();
        QVERIFY(!outcome);
        QCOMPARE(outcome.error().message, u"Engine write failed: database or disk is full"_s);
        QCOMPARE(rows("SELECT (SELECT count(*) FROM Track), (SELECT count(*) FROM Playlist),"
                      " (SELECT count(*) FROM PlaylistEntity)"),
                 QStringList{u"0|0|0"_s});
        const bool cameToTheCrates = log.reports.last().startsWith(u"Writing crates…"_s);
        QCOMPARE(cameToTheCrates, failing != 200);
    }
}

void EngineExporterTest::failsOnAFullDevice()
{
    const TinyDisk disk(m_folder->makeFolder(u"USB"_s));
    if (!disk.isMounted())
        QSKIP("this user can't mount a file system");
    const auto outcome =
        EngineExporter::exportTo(tracksOnDisk(2000), {}, m_folder->path(u"USB"_s), ignoreProgress);
    QVERIFY(!outcome);
    QCOMPARE(outcome.error().message, u"Engine write failed: database or disk is full"_s);
    const QString path = EngineExporter::databaseIn(m_folder->path(u"USB"_s));
    QCOMPARE(rowsOf(path, "SELECT (SELECT count(*) FROM Information), count(*) FROM Track"),
             QStringList{u"0|0"_s});
}

void EngineExporterTest::readsBackWhatItWrites()
{
    QVERIFY(exportSmallLibrary());
    QCOMPARE(pathsOf(smallLibrary()).size(), 6);
    QCOMPARE(EngineExporter::readPaths(databasePath()), pathsOf(smallLibrary()));
}

void EngineExporterTest::readsNothingOfWhatIsNoDatabase_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no file") << folderName + u"/other"_s << QByteArray();
    QTest::newRow("text") << fileName << QByteArray("not a database at all");
    QTest::newRow("empty file") << fileName << QByteArray();
    QTest::newRow("a folder") << fileName + u"/file"_s << QByteArray();
}

void EngineExporterTest::readsNothingOfWhatIsNoDatabase()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    m_folder->write(name, content);
    QCOMPARE(EngineExporter::readPaths(databasePath()), QSet<QString>());
    QCOMPARE(m_folder->read(name), content);
    QCOMPARE(QFileInfo::exists(databasePath()), name.startsWith(fileName)); // a look makes no file
}

void EngineExporterTest::readsWhatItCanOfADamagedDatabase()
{
    const std::vector<ScannedTrack> tracks = tracksOnDisk(2000);
    QVERIFY(EngineExporter::exportTo(tracks, {}, m_folder->path(), ignoreProgress));
    QByteArray content = m_folder->read(fileName);
    content.replace(content.size() / 2, content.size() / 2, QByteArray(content.size() / 2, '\xFF'));
    m_folder->write(fileName, content);
    const QSet<QString> found = EngineExporter::readPaths(databasePath());
    QVERIFY(found.size() < 2000);
    QVERIFY(pathsOf(tracks).contains(found));
}

QTEST_GUILESS_MAIN(EngineExporterTest)
#include "engine_exporter_test.moc"
