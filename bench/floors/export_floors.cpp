#include "floors/export_floors.h"

#include <QHash>

#include <charconv>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace tarnwick::bench {

namespace {

void demand(bool good, const char *what)
{
    if (good)
        return;
    std::perror(what);
    std::abort();
}

int minutesAndSeconds(const QString &text)
{
    const qsizetype colon = text.indexOf(u':');
    return text.first(colon).toInt() * 60 + text.sliced(colon + 1).toInt();
}

PlainTrack plain(const SeratoTrack &track)
{
    return {.path = track.absolutePath().toStdString(),
            .fileName = track.fileName().toStdString(),
            .title = track.displayTitle().toStdString(),
            .artist = track.displayArtist().toStdString(),
            .album = track.album.toStdString(),
            .genre = track.genre.toStdString(),
            .key = track.key.toStdString(),
            .fileType = track.fileType.toStdString(),
            .tempo = track.bpm.toDouble(),
            .seconds = minutesAndSeconds(track.lengthText),
            .bitrate = track.bitrateKbps()};
}

void addEscaped(std::string &out, const std::string &text)
{
    for (const char byte : text) {
        switch (byte) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&apos;";
            break;
        default:
            out += byte;
        }
    }
}

bool isKept(unsigned char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '-' && byte <= '9') || byte == '_' || byte == '~';
}

void addUrl(std::string &out, const std::string &path)
{
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (isKept(byte)) {
            out += character;
        } else {
            out += '%';
            out += "0123456789ABCDEF"[byte >> 4];
            out += "0123456789ABCDEF"[byte & 15];
        }
    }
}

template <typename Number, typename... Format>
void addNumber(std::string &out, Number number, Format... format)
{
    char digits[64];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, number, format...).ptr);
}

void addTrack(std::string &out, const PlainTrack &track, int id)
{
    out += "    <TRACK TrackID=\"";
    addNumber(out, id);
    out += "\" Name=\"";
    addEscaped(out, track.title);
    out += "\" Artist=\"";
    addEscaped(out, track.artist);
    out += "\" Album=\"";
    addEscaped(out, track.album);
    out += "\" Genre=\"";
    addEscaped(out, track.genre);
    out += "\" Kind=\"";
    out += track.fileType;
    out += " File\" TotalTime=\"";
    addNumber(out, track.seconds);
    if (track.tempo > 0) {
        out += "\" AverageBpm=\"";
        addNumber(out, track.tempo, std::chars_format::fixed, 2);
    }
    out += "\" Tonality=\"";
    addEscaped(out, track.key);
    out += "\" BitRate=\"";
    addNumber(out, track.bitrate);
    out += "\" Location=\"file://localhost";
    addUrl(out, track.path);
    if (track.tempo > 0) {
        out += "\">\n      <TEMPO Inizio=\"0.000\" Bpm=\"";
        addNumber(out, track.tempo, std::chars_format::fixed, 2);
        out += "\" Metro=\"4/4\" Battito=\"1\"/>\n    </TRACK>\n";
    } else {
        out += "\"/>\n";
    }
}

void addPlaylist(std::string &out, const PlainCrate &crate)
{
    out += "      <NODE Name=\"";
    addEscaped(out, crate.name);
    out += "\" Type=\"1\" KeyType=\"0\" Entries=\"";
    addNumber(out, crate.tracks.size());
    out += "\">\n";
    for (const int id : crate.tracks) {
        out += "        <TRACK Key=\"";
        addNumber(out, id);
        out += "\"/>\n";
    }
    out += "      </NODE>\n";
}

void replace(const std::string &path, const std::string &content)
{
    const std::string temporary = path + ".new";
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    demand(file >= 0, "open");
    for (size_t done = 0; done < content.size();) {
        const ssize_t count = ::write(file, content.data() + done, content.size() - done);
        demand(count > 0, "write");
        done += size_t(count);
    }
    demand(::fsync(file) == 0 && ::close(file) == 0, "flush");
    demand(::rename(temporary.c_str(), path.c_str()) == 0, "rename");
}

/// A statement that is prepared once. SQLite copies each text, as it does for the exporter.
class Insert
{
public:
    Insert(sqlite3 *database, const char *sql)
    {
        demand(sqlite3_prepare_v2(database, sql, -1, &m_statement, nullptr) == SQLITE_OK, sql);
    }
    ~Insert() { sqlite3_finalize(m_statement); }

    Insert &text(const std::string &value)
    {
        sqlite3_bind_text(m_statement, ++m_parameter, value.c_str(), -1, SQLITE_TRANSIENT);
        return *this;
    }
    Insert &number(sqlite3_int64 value)
    {
        sqlite3_bind_int64(m_statement, ++m_parameter, value);
        return *this;
    }
    Insert &real(double value)
    {
        sqlite3_bind_double(m_statement, ++m_parameter, value);
        return *this;
    }
    void run()
    {
        demand(sqlite3_step(m_statement) == SQLITE_DONE, "insert");
        sqlite3_reset(m_statement);
        m_parameter = 0;
    }

private:
    sqlite3_stmt *m_statement = nullptr;
    int m_parameter = 0;
};

constexpr char tables[] =
    "CREATE TABLE Information (id INTEGER PRIMARY KEY, uuid TEXT, schemaVersionMajor INTEGER,"
    " schemaVersionMinor INTEGER, schemaVersionPatch INTEGER);"
    "CREATE TABLE Track (id INTEGER PRIMARY KEY, path TEXT, filename TEXT, title TEXT, artist TEXT,"
    " album TEXT, genre TEXT, length INTEGER, bpm REAL, bitrate INTEGER, fileType TEXT,"
    " isAvailable INTEGER DEFAULT 1, isAnalyzed INTEGER DEFAULT 0,"
    " dateAdded INTEGER DEFAULT (strftime('%s','now')));"
    "CREATE TABLE Playlist (id INTEGER PRIMARY KEY, title TEXT, parentListId INTEGER DEFAULT 0);"
    "CREATE TABLE PlaylistEntity (id INTEGER PRIMARY KEY AUTOINCREMENT, listId INTEGER,"
    " trackId INTEGER, databaseUuid TEXT, nextEntityId INTEGER DEFAULT 0,"
    " membershipReference INTEGER);"
    "CREATE INDEX idx_track_path ON Track(path);"
    "CREATE INDEX idx_entity_list ON PlaylistEntity(listId);"
    "PRAGMA cache_size=-65536; BEGIN; INSERT INTO Information VALUES (1, 'floor', 2, 20, 1);";

void insertTracks(sqlite3 *database, const PlainLibrary &library)
{
    Insert insert(database, "INSERT INTO Track (id, path, filename, title, artist, album, genre,"
                            " length, bpm, bitrate, fileType, isAvailable, isAnalyzed)"
                            " VALUES (?,?,?,?,?,?,?,?,?,?,?,1,1)");
    int id = 0;
    for (const PlainTrack &track : library.tracks) {
        insert.number(++id).text(track.path).text(track.fileName).text(track.title);
        insert.text(track.artist).text(track.album).text(track.genre).number(track.seconds);
        insert.real(track.tempo).number(track.bitrate * 1000).text(track.fileType).run();
    }
}

void insertEntry(sqlite3 *database, int listId, int trackId, int place)
{
    char sql[160];
    std::snprintf(sql, sizeof sql,
                  "INSERT INTO PlaylistEntity (listId, trackId, databaseUuid, nextEntityId,"
                  " membershipReference) VALUES (%d, %d, '', 0, %d);",
                  listId, trackId, place);
    demand(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

void insertPlaylists(sqlite3 *database, const PlainLibrary &library)
{
    Insert playlist(database, "INSERT INTO Playlist (id, title, parentListId) VALUES (?,?,0)");
    int listId = 0;
    for (const PlainCrate &crate : library.crates) {
        playlist.number(++listId).text(crate.name).run();
        int place = 0;
        for (const int id : crate.tracks)
            insertEntry(database, listId, id, ++place);
    }
}

} // namespace

PlainLibrary plainLibrary(const std::vector<ScannedTrack> &tracks, const QList<LoadedCrate> &crates)
{
    PlainLibrary library;
    QHash<QString, int> ids;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        library.tracks.push_back(plain(scanned.track));
        ids.insert(scanned.track.relativePath, int(library.tracks.size()));
    }
    for (const LoadedCrate &crate : crates) {
        PlainCrate playlist{crate.name.toStdString(), {}};
        for (const QString &path : crate.paths) {
            if (const int id = ids.value(path))
                playlist.tracks.push_back(id);
        }
        library.crates.push_back(playlist);
    }
    return library;
}

void writeCollection(const PlainLibrary &library, const std::string &folder)
{
    std::string out = "<DJ_PLAYLISTS>\n  <COLLECTION>\n";
    int id = 0;
    for (const PlainTrack &track : library.tracks)
        addTrack(out, track, ++id);
    out += "  </COLLECTION>\n  <PLAYLISTS>\n";
    for (const PlainCrate &crate : library.crates)
        addPlaylist(out, crate);
    out += "  </PLAYLISTS>\n</DJ_PLAYLISTS>\n";
    replace(folder + "/floor.xml", out);
}

void writeDatabase(const PlainLibrary &library, const std::string &folder)
{
    const std::string path = folder + "/floor.db";
    ::unlink(path.c_str());
    sqlite3 *database = nullptr;
    demand(sqlite3_open(path.c_str(), &database) == SQLITE_OK, "open");
    demand(sqlite3_exec(database, tables, nullptr, nullptr, nullptr) == SQLITE_OK, "tables");
    insertTracks(database, library);
    insertPlaylists(database, library);
    demand(sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK, "commit");
    sqlite3_close(database);
}

} // namespace tarnwick::bench
