#include "export/rekordbox_exporter.h"

#include "export/export_util.h"
#include "export/rekordbox_collection.h"
#include "export/tracks_on_disk.h"
#include "foundation/paths.h"
#include "platform/files.h"
#include "platform/files_write.h"

#include <algorithm>
#include <iterator>
#include <string_view>

using namespace Qt::StringLiterals;

namespace tarnwick::RekordboxExporter {

namespace {

constexpr int tracksPerReport = 50;
constexpr std::string_view locationStart = "Location=\"file://localhost";

QString pathIn(const QString &folder)
{
    return joinedPath(folder, infoOf(ExportTarget::Rekordbox).fileName);
}

QList<LoadedCrate> withEntries(const QList<LoadedCrate> &crates)
{
    QList<LoadedCrate> kept;
    std::copy_if(crates.begin(), crates.end(), std::back_inserter(kept),
                 [](const LoadedCrate &crate) { return !crate.paths.isEmpty(); });
    return kept;
}

RekordboxCollection collectionOf(const TracksOnDisk &tracks, const QList<LoadedCrate> &crates,
                                 const ExportProgressFunction &progress)
{
    const QString phase = u"Writing collection…"_s;
    progress({phase, 0, tracks.count()});
    RekordboxCollection collection;
    collection.begin(tracks.count());
    for (int number = 1; number <= tracks.count(); ++number) {
        collection.addTrack(tracks.track(number), number);
        if (number % tracksPerReport == 0)
            progress({phase, number, tracks.count()});
    }
    progress({u"Writing playlists…"_s, tracks.count(), tracks.count()});
    collection.beginPlaylists(int(crates.size()));
    for (const LoadedCrate &crate : crates)
        collection.addPlaylist(crate.name, tracks.numbersOf(crate.paths));
    collection.end();
    return collection;
}

} // namespace

Result<ExportOutcome> exportTo(const std::vector<ScannedTrack> &tracks,
                               const QList<LoadedCrate> &crates, const QString &folder,
                               const ExportProgressFunction &progress)
{
    const TracksOnDisk exported(tracks);
    const QList<LoadedCrate> playlists = withEntries(crates);
    const RekordboxCollection collection = collectionOf(exported, playlists, progress);
    const QString path = pathIn(folder);
    return platform::makeFolders(folder)
        .and_then([&] { return platform::replaceFile(path, collection.text()); })
        .map([&] {
            return ExportOutcome{ExportTarget::Rekordbox, path, exported.count(),
                                 int(playlists.size())};
        });
}

std::optional<QSet<QString>> readPaths(const QString &folder)
{
    const Result<QByteArray> content = platform::readFile(pathIn(folder));
    if (!content || !content->isValidUtf8())
        return std::nullopt;
    const std::string_view text(content->constData(), size_t(content->size()));
    QSet<QString> paths;
    size_t at = text.find(locationStart);
    while (at != text.npos) {
        at += locationStart.size();
        const size_t next = text.find(locationStart, at);
        const std::string_view piece = text.substr(at, next - at);
        if (const size_t end = piece.find('"'); end != piece.npos)
            paths.insert(ExportUtil::withoutPercentEncoding(piece.substr(0, end)));
        at = next;
    }
    return paths;
}

} // namespace tarnwick::RekordboxExporter
