#include "export/engine_database.h"

#include "export/export_util.h"
#include "foundation/numbers.h"
#include "foundation/paths.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace tarnwick::EngineExporter {

namespace {

// Frozen: what is already on people's devices has these very tables.
constexpr char schema[] =
    "CREATE TABLE Information (id INTEGER PRIMARY KEY, uuid TEXT, schemaVersionMajor INTEGER, "
    "schemaVersionMinor INTEGER, schemaVersionPatch INTEGER);\n"
    "CREATE TABLE Track (\n"
    "  id INTEGER PRIMARY KEY, path TEXT, filename TEXT, title TEXT, artist TEXT,\n"
    "  album TEXT, genre TEXT, length INTEGER, bpm REAL, bitrate INTEGER,\n"
    "  fileType TEXT, isAvailable INTEGER DEFAULT 1, isAnalyzed INTEGER DEFAULT 0,\n"
    "  dateAdded INTEGER DEFAULT (strftime('%s','now'))\n"
    ");\n"
    "CREATE TABLE Playlist (id INTEGER PRIMARY KEY, title TEXT, parentListId INTEGER DEFAULT 0);\n"
    "CREATE TABLE PlaylistEntity (\n"
    "  id INTEGER PRIMARY KEY AUTOINCREMENT, listId INTEGER, trackId INTEGER,\n"
    "  databaseUuid TEXT, nextEntityId INTEGER DEFAULT 0, membershipReference INTEGER\n"
    ");\n"
    "CREATE INDEX idx_track_path ON Track(path);\n"
    "CREATE INDEX idx_entity_list ON PlaylistEntity(listId);";

// In KiB: enough for the pages of a hundred thousand tracks, so that none is written twice. The
// index of the paths touches them in no order.
constexpr char cacheSize[] = "PRAGMA cache_size=-65536;";

// A transaction ends with the removal of its journal. Were that lost in a power cut, the tables
// would be there again without their rows.
constexpr char lastingCommit[] = "PRAGMA synchronous=EXTRA;";

constexpr char trackInsert[] =
    "INSERT INTO Track (id, path, filename, title, artist, album, genre, length, bpm, bitrate, "
    "fileType, isAvailable, isAnalyzed) VALUES (?,?,?,?,?,?,?,?,?,?,?,1,1);";

/// The places of the track's columns in that statement.
enum TrackParameter {
    Id = 1,
    Path,
    FileName,
    Title,
    Artist,
    Album,
    Genre,
    Length,
    Bpm,
    Bitrate,
    FileType,
};

QByteArray freshUuid()
{
    return QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper();
}

} // namespace

EngineResult<EngineDatabase> EngineDatabase::create(const QString &path)
{
    sqlite3 *connection = nullptr;
    const int result = sqlite3_open(path.toUtf8().constData(), &connection);
    EngineDatabase database{SqliteConnection(connection)};
    if (result != SQLITE_OK)
        return tl::unexpected(EngineError{EngineError::Kind::Open, database.lastError().text});
    return database.begin().map([&] { return std::move(database); });
}

EngineResult<void> EngineDatabase::begin()
{
    return exec(cacheSize)
        .and_then([this] { return exec(schema); })
        .and_then([this] { return exec(lastingCommit); })
        .and_then([this] { return exec("BEGIN;"); })
        .and_then([this] { return addInformation(); })
        .and_then([this] { return prepareTracks(); });
}

EngineResult<void> EngineDatabase::addInformation()
{
    const QByteArray sql = "INSERT INTO Information (id, uuid, schemaVersionMajor, "
                           "schemaVersionMinor, schemaVersionPatch) VALUES (1, '" +
                           freshUuid() + "', 2, 20, 1);";
    return exec(sql.constData());
}

EngineResult<void> EngineDatabase::prepareTracks()
{
    sqlite3_stmt *statement = nullptr;
    const int result = sqlite3_prepare_v2(m_connection.get(), trackInsert, -1, &statement, nullptr);
    m_trackInsert.reset(statement);
    if (result != SQLITE_OK)
        return tl::unexpected(lastError());
    return {};
}

EngineResult<void> EngineDatabase::addTrack(int id, const SeratoTrack &track)
{
    sqlite3_stmt *statement = m_trackInsert.get();
    sqlite3_reset(statement);
    sqlite3_bind_int64(statement, Id, id);
    bindPath(track.absolutePath());
    bindText(Title, track.displayTitle());
    bindText(Artist, track.displayArtist());
    bindText(Album, track.album);
    bindText(Genre, track.genre);
    sqlite3_bind_int64(statement, Length, ExportUtil::seconds(track.lengthText));
    sqlite3_bind_double(statement, Bpm, parseTempo(track.bpm).value_or(0.0));
    sqlite3_bind_int64(statement, Bitrate, qint64(track.bitrateKbps()) * 1000);
    bindText(FileType, track.fileType);
    if (sqlite3_step(statement) != SQLITE_DONE)
        return tl::unexpected(lastError());
    return {};
}

EngineResult<void> EngineDatabase::addPlaylist(int listId, const QString &title)
{
    const QByteArray quoted = title.toUtf8().replace("'", "''");
    const QByteArray sql = "INSERT INTO Playlist (id, title, parentListId) VALUES (" +
                           QByteArray::number(listId) + ", '" + quoted + "', 0);";
    return exec(sql.constData());
}

EngineResult<void> EngineDatabase::addEntry(int listId, int trackId, int place)
{
    m_text.clear();
    m_text.add("INSERT INTO PlaylistEntity (listId, trackId, databaseUuid, nextEntityId, "
               "membershipReference) VALUES (");
    m_text.addNumber(listId);
    m_text.add(", ");
    m_text.addNumber(trackId);
    m_text.add(", '', 0, ");
    m_text.addNumber(place);
    m_text.add(");");
    m_text.add('\0');
    return exec(m_text.view().data());
}

/// `sql` ends in NUL.
EngineResult<void> EngineDatabase::exec(const char *sql)
{
    char *words = nullptr;
    if (sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, &words) == SQLITE_OK)
        return {};
    const EngineError error{EngineError::Kind::Exec,
                            words ? QString::fromUtf8(words) : u"unknown"_s};
    sqlite3_free(words);
    return tl::unexpected(error);
}

void EngineDatabase::bindPath(const QString &path)
{
    bindText(Path, path);
    const QByteArrayView bound = m_text.view().chopped(1);
    if (bound.endsWith('/'))
        bindText(FileName, lastPathComponent(path));
    else // what follows the last slash of the text just bound, its NUL included
        bindUtf8(FileName, bound.data() + bound.lastIndexOf('/') + 1);
}

void EngineDatabase::bindText(int parameter, QStringView text)
{
    m_text.clear();
    m_text.addText(text);
    m_text.add('\0');
    bindUtf8(parameter, m_text.view().data());
}

void EngineDatabase::bindUtf8(int parameter, const char *text)
{
    // SQLite takes a copy of its own.
    sqlite3_bind_text(m_trackInsert.get(), parameter, text, -1, SQLITE_TRANSIENT);
}

EngineError EngineDatabase::lastError() const
{
    return {EngineError::Kind::Exec, QString::fromUtf8(sqlite3_errmsg(m_connection.get()))};
}

} // namespace tarnwick::EngineExporter
