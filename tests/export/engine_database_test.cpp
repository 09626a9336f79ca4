#include "export/engine_database.h"

#include "export/export_library.h"
#include "support/memory_folder.h"
#include "support/sqlite_reader.h"
#include "support/test_folder.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::EngineExporter;
using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(SeratoTrack &)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class EngineDatabaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { keepTemporaryFoldersInMemory(); }
    void init();
    void makesTheTablesWordForWord();
    void tellsItsSchemaVersionAndAFreshUuid();
    void storesATrack();
    void storesATrackThatHasNothing();
    void storesWhatTextsState_data();
    void storesWhatTextsState();
    void storesATextUpToItsFirstNul();
    void dateAddedIsTheTimeOfTheExport();
    void storesAPlaylistsNameAsItStands_data();
    void storesAPlaylistsNameAsItStands();
    void storesTheEntriesOfAPlaylist();
    void goesBackToBareTablesWithoutACommit();
    void failsWhereTheTablesExist();
    void failsWhereNoDatabaseCanBe_data();
    void failsWhereNoDatabaseCanBe();
    void failsOnATrackNumberThatIsTaken();

private:
    EngineDatabase create();
    QStringList rows(const char *sql) const { return rowsOf(m_folder->path(u"m.db"_s), sql); }
    QStringList rowsOfTrack(const SeratoTrack &track, const char *sql);

    std::unique_ptr<TestFolder> m_folder;
};

void EngineDatabaseTest::init()
{
    m_folder = std::make_unique<TestFolder>();
}

EngineDatabase EngineDatabaseTest::create()
{
    auto database = EngineDatabase::create(m_folder->path(u"m.db"_s));
    if (!database)
        qFatal("%s", qUtf8Printable(database.error().message()));
    return std::move(*database);
}

QStringList EngineDatabaseTest::rowsOfTrack(const SeratoTrack &track, const char *sql)
{
    EngineDatabase database = create();
    if (!database.addTrack(1, track) || !database.commit())
        qFatal("a track can't be added");
    return rows(sql);
}

void EngineDatabaseTest::makesTheTablesWordForWord()
{
    EngineDatabase database = create();
    const QStringList expected = {
        u"CREATE TABLE Information (id INTEGER PRIMARY KEY, uuid TEXT, schemaVersionMajor INTEGER,"
        " schemaVersionMinor INTEGER, schemaVersionPatch INTEGER)"_s,
        u"CREATE TABLE Track (\n"
        "  id INTEGER PRIMARY KEY, path TEXT, filename TEXT, title TEXT, artist TEXT,\n"
        "  album TEXT, genre TEXT, length INTEGER, bpm REAL, bitrate INTEGER,\n"
        "  fileType TEXT, isAvailable INTEGER DEFAULT 1, isAnalyzed INTEGER DEFAULT 0,\n"
        "  dateAdded INTEGER DEFAULT (strftime('%s','now'))\n"
        ")"_s,
        u"CREATE TABLE Playlist (id INTEGER PRIMARY KEY, title TEXT,"
        " parentListId INTEGER DEFAULT 0)"_s,
        u"CREATE TABLE PlaylistEntity (\n"
        "  id INTEGER PRIMARY KEY AUTOINCREMENT, listId INTEGER, trackId INTEGER,\n"
        "  databaseUuid TEXT, nextEntityId INTEGER DEFAULT 0, membershipReference INTEGER\n"
        ")"_s,
        u"CREATE INDEX idx_track_path ON Track(path)"_s,
        u"CREATE INDEX idx_entity_list ON PlaylistEntity(listId)"_s,
    };
    QCOMPARE(rows("SELECT sql FROM sqlite_master WHERE name <> 'sqlite_sequence' ORDER BY rowid"),
             expected);
}

void EngineDatabaseTest::tellsItsSchemaVersionAndAFreshUuid()
{
    EngineDatabase database = create();
    QVERIFY(database.commit());
    QCOMPARE(rows("SELECT id, schemaVersionMajor, schemaVersionMinor, schemaVersionPatch"
                  " FROM Information"),
             QStringList{u"1|2|20|1"_s});
    const QString uuid = rows("SELECT uuid FROM Information").value(0);
    static const QRegularExpression form(
        u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s);
    QVERIFY2(form.match(uuid).hasMatch(), qUtf8Printable(uuid));

    m_folder = std::make_unique<TestFolder>();
    EngineDatabase another = create();
    QVERIFY(another.commit());
    QVERIFY(rows("SELECT uuid FROM Information").value(0) != uuid);
}

void EngineDatabaseTest::storesATrack()
{
    SeratoTrack track;
    track.relativePath = u"Users/x/O'Brien 🎧.mp3"_s;
    track.title = u"two\nlines"_s;
    track.artist = u"O'Brien"_s;
    track.album = u"\"It's <on>\""_s;
    track.genre = u"Drum & Bass"_s;
    track.lengthText = u"04:23"_s;
    track.bpm = u"174.5"_s;
    track.bitrateText = u"320.0kbps"_s;
    track.fileType = u"mp3"_s;
    QCOMPARE(rowsOfTrack(track, "SELECT id, path, filename, title, artist, album, genre, length,"
                                " bpm, bitrate, fileType, isAvailable, isAnalyzed FROM Track"),
             QStringList{u"1|/Users/x/O'Brien 🎧.mp3|O'Brien 🎧.mp3|two\nlines|O'Brien|"
                         "\"It's <on>\"|Drum & Bass|263|174.5|320000|mp3|1|1"_s});
}

void EngineDatabaseTest::storesATrackThatHasNothing()
{
    // Empty texts, not NULLs.
    QCOMPARE(rowsOfTrack({}, "SELECT path, filename, title, artist, album, genre, length, bpm,"
                             " bitrate, fileType FROM Track"),
             QStringList{u"/|/|||||0|0.0|0|"_s});
}

void EngineDatabaseTest::storesWhatTextsState_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("lengthBpmBitrate");
    const auto row = [](const char *name, const Change &change, const QString &expected) {
        QTest::newRow(name) << change << expected;
    };
    row(
        "no number", [](SeratoTrack &t) { t.bpm = u"fast"_s; }, u"0|0.0|0"_s);
    row(
        "number with a unit", [](SeratoTrack &t) { t.bpm = u"128 bpm"_s; }, u"0|0.0|0"_s);
    row(
        "leading blank", [](SeratoTrack &t) { t.bpm = u" 128"_s; }, u"0|0.0|0"_s);
    row(
        "not finite", [](SeratoTrack &t) { t.bpm = u"inf"_s; }, u"0|0.0|0"_s);
    row(
        "no number by name", [](SeratoTrack &t) { t.bpm = u"nan"_s; }, u"0|0.0|0"_s);
    row(
        "too large", [](SeratoTrack &t) { t.bpm = u"1e999"_s; }, u"0|0.0|0"_s);
    row(
        "whole", [](SeratoTrack &t) { t.bpm = u"128"_s; }, u"0|128.0|0"_s);
    row(
        "below nought", [](SeratoTrack &t) { t.bpm = u"-5"_s; }, u"0|-5.0|0"_s);
    row(
        "length with a fraction", [](SeratoTrack &t) { t.lengthText = u"04:23.17"_s; },
        u"0|0.0|0"_s);
    row(
        "hours", [](SeratoTrack &t) { t.lengthText = u"1:00:00"_s; }, u"3600|0.0|0"_s);
    row(
        "length below nought", [](SeratoTrack &t) { t.lengthText = u"-1:05"_s; }, u"-55|0.0|0"_s);
    row(
        "largest length", [](SeratoTrack &t) { t.lengthText = u"0:9223372036854775807"_s; },
        u"9223372036854775807|0.0|0"_s);
    row(
        "no bit rate", [](SeratoTrack &t) { t.bitrateText = u"VBR"_s; }, u"0|0.0|0"_s);
    row(
        "largest bit rate", [](SeratoTrack &t) { t.bitrateText = u"99999999999"_s; },
        u"0|0.0|2147483647000"_s);
}

void EngineDatabaseTest::storesWhatTextsState()
{
    QFETCH(Change, change);
    QFETCH(QString, lengthBpmBitrate);
    SeratoTrack track;
    change(track);
    QCOMPARE(rowsOfTrack(track, "SELECT length, bpm, bitrate FROM Track"),
             QStringList{lengthBpmBitrate});
}

void EngineDatabaseTest::storesATextUpToItsFirstNul()
{
    SeratoTrack track;
    track.title = u"a"_s + QChar::Null + u"b"_s;
    track.album = u"b"_s;
    QCOMPARE(rowsOfTrack(track, "SELECT hex(title), hex(album) FROM Track"),
             QStringList{u"61|62"_s});
}

void EngineDatabaseTest::dateAddedIsTheTimeOfTheExport()
{
    SeratoTrack track;
    track.dateAdded = 1'000'000'000;
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    const QStringList dates = rowsOfTrack(track, "SELECT dateAdded FROM Track");
    const qint64 after = QDateTime::currentSecsSinceEpoch();
    QCOMPARE(dates.size(), 1);
    QVERIFY(before <= dates[0].toLongLong() && dates[0].toLongLong() <= after);
}

void EngineDatabaseTest::storesAPlaylistsNameAsItStands_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("apostrophes") << u"Don't 'stop'''"_s;
    QTest::newRow("an attempt at a statement") << u"', 0); DROP TABLE Track; --"_s;
    QTest::newRow("double quotes and backslash") << u"\"a\" \\ `b`"_s;
    QTest::newRow("line break, semicolon") << u"a\nb;"_s;
    QTest::newRow("beyond ASCII") << u"Ночь 🎧"_s;
    QTest::newRow("empty") << u""_s;
}

void EngineDatabaseTest::storesAPlaylistsNameAsItStands()
{
    QFETCH(QString, name);
    EngineDatabase database = create();
    QVERIFY(database.addPlaylist(7, name));
    QVERIFY(database.commit());
    QCOMPARE(rows("SELECT id, title, parentListId FROM Playlist"),
             QStringList{u"7|%1|0"_s.arg(name)});
}

void EngineDatabaseTest::storesTheEntriesOfAPlaylist()
{
    EngineDatabase database = create();
    QVERIFY(database.addEntry(1, 12, 1));
    QVERIFY(database.addEntry(1, 7, 2));
    QVERIFY(database.addEntry(2, 12, 1));
    QVERIFY(database.commit());
    const QStringList expected = {u"1|1|12||0|1"_s, u"2|1|7||0|2"_s, u"3|2|12||0|1"_s};
    QCOMPARE(rows("SELECT id, listId, trackId, databaseUuid, nextEntityId, membershipReference"
                  " FROM PlaylistEntity ORDER BY id"),
             expected);
    QCOMPARE(rows("SELECT DISTINCT typeof(databaseUuid) FROM PlaylistEntity"),
             QStringList{u"text"_s});
}

void EngineDatabaseTest::goesBackToBareTablesWithoutACommit()
{
    {
        EngineDatabase database = create();
        QVERIFY(database.addTrack(1, {}));
        QVERIFY(database.addPlaylist(1, u"A"_s));
    }
    QCOMPARE(rows("SELECT (SELECT count(*) FROM Information), (SELECT count(*) FROM Track),"
                  " (SELECT count(*) FROM Playlist)"),
             QStringList{u"0|0|0"_s});
    QCOMPARE(m_folder->names(), QStringList{u"m.db"_s});
}

void EngineDatabaseTest::failsWhereTheTablesExist()
{
    QVERIFY(create().commit());
    const auto again = EngineDatabase::create(m_folder->path(u"m.db"_s));
    QVERIFY(!again);
    QCOMPARE(again.error(),
             (EngineError{EngineError::Kind::Exec, u"table Information already exists"_s}));
    QCOMPARE(again.error().message(), u"Engine write failed: table Information already exists"_s);
}

void EngineDatabaseTest::failsWhereNoDatabaseCanBe_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("no such folder") << u"nowhere/m.db"_s;
}

void EngineDatabaseTest::failsWhereNoDatabaseCanBe()
{
    QFETCH(QString, name);
    m_folder->makeFolder(u"folder"_s);
    const auto database = EngineDatabase::create(m_folder->path(name));
    QVERIFY(!database);
    QCOMPARE(database.error(),
             (EngineError{EngineError::Kind::Open, u"unable to open database file"_s}));
    QCOMPARE(database.error().message(),
             u"Couldn't create Engine database: unable to open database file"_s);
}

void EngineDatabaseTest::failsOnATrackNumberThatIsTaken()
{
    EngineDatabase database = create();
    QVERIFY(database.addTrack(1, {}));
    const auto added = database.addTrack(1, {});
    QVERIFY(!added);
    QCOMPARE(added.error().message(), u"Engine write failed: UNIQUE constraint failed: Track.id"_s);
}

QTEST_GUILESS_MAIN(EngineDatabaseTest)
#include "engine_database_test.moc"
