#include "export/engine_exporter.h"

#include "export/engine_database.h"
#include "export/tracks_on_disk.h"
#include "foundation/paths.h"
#include "foundation/utf8.h"
#include "platform/files.h"
#include "platform/files_write.h"

using namespace Qt::StringLiterals;

namespace tarnwick::EngineExporter {

namespace {

constexpr int tracksPerReport = 50;

EngineResult<void> addTracks(EngineDatabase &database, const TracksOnDisk &tracks,
                             const ExportProgressFunction &progress)
{
    for (int id = 1; id <= tracks.count(); ++id) {
        if (auto added = database.addTrack(id, tracks.track(id)); !added)
            return added;
        if (id % tracksPerReport == 0)
            progress({u"Creating Engine library…"_s, id, tracks.count()});
    }
    database.endTracks();
    progress({u"Writing crates…"_s, tracks.count(), tracks.count()});
    return {};
}

EngineResult<void> addCrate(EngineDatabase &database, int listId, const LoadedCrate &crate,
                            const TracksOnDisk &tracks)
{
    if (auto added = database.addPlaylist(listId, crate.name); !added)
        return added;
    int place = 0;
    for (const int trackId : tracks.numbersOf(crate.paths)) {
        if (auto added = database.addEntry(listId, trackId, ++place); !added)
            return added;
    }
    return {};
}

/// Gives the number of playlists.
EngineResult<int> addCrates(EngineDatabase &database, const QList<LoadedCrate> &crates,
                            const TracksOnDisk &tracks)
{
    int listId = 0;
    for (const LoadedCrate &crate : crates) {
        if (crate.paths.isEmpty())
            continue;
        if (const auto added = addCrate(database, ++listId, crate, tracks); !added)
            return tl::unexpected(added.error());
    }
    return listId;
}

EngineResult<int> fill(EngineDatabase &database, const TracksOnDisk &tracks,
                       const QList<LoadedCrate> &crates, const ExportProgressFunction &progress)
{
    return addTracks(database, tracks, progress)
        .and_then([&] { return addCrates(database, crates, tracks); })
        .and_then([&](int playlists) {
            return database.commit().map([playlists] { return playlists; });
        });
}

} // namespace

QString databaseIn(const QString &folder)
{
    return joinedPath(joinedPath(folder, infoOf(ExportTarget::Engine).fileName),
                      u"Database2/m.db"_s);
}

Result<ExportOutcome> exportTo(const std::vector<ScannedTrack> &tracks,
                               const QList<LoadedCrate> &crates, const QString &folder,
                               const ExportProgressFunction &progress)
{
    const TracksOnDisk exported(tracks);
    progress({u"Creating Engine library…"_s, 0, exported.count()});
    const QString path = databaseIn(folder);
    if (const Done made = platform::makeFolders(parentFolder(path)); !made)
        return tl::unexpected(made.error());
    platform::removeFile(path); // most often nothing is there; whatever stays fails the next step
    const EngineResult<int> playlists = EngineDatabase::create(path).and_then(
        [&](EngineDatabase &&database) { return fill(database, exported, crates, progress); });
    if (!playlists)
        return failure(playlists.error().message());
    return ExportOutcome{ExportTarget::Engine, path, exported.count(), *playlists};
}

QSet<QString> readPaths(const QString &databasePath)
{
    if (!platform::isRegularFile(databasePath)) // SQLite would make a missing one
        return {};
    sqlite3 *opened = nullptr;
    const int result = sqlite3_open(databasePath.toUtf8().constData(), &opened);
    const SqliteConnection connection(opened);
    if (result != SQLITE_OK)
        return {};
    sqlite3_stmt *prepared = nullptr;
    sqlite3_prepare_v2(opened, "SELECT path FROM Track;", -1, &prepared, nullptr);
    const SqliteStatement statement(prepared);
    QSet<QString> paths;
    while (prepared && sqlite3_step(prepared) == SQLITE_ROW) {
        if (const auto *path = sqlite3_column_text(prepared, 0))
            paths.insert(decodeUtf8(reinterpret_cast<const char *>(path)));
    }
    return paths;
}

} // namespace tarnwick::EngineExporter
