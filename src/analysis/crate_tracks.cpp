#include "analysis/crate_tracks.h"

#include "serato/crate_store.h"

namespace tarnwick {

TrackMap trackMapOf(const std::vector<ScannedTrack> &tracks)
{
    TrackMap map;
    map.reserve(qsizetype(tracks.size()));
    for (const ScannedTrack &scanned : tracks)
        map.insert(CrateStore::normalize(scanned.track.relativePath), &scanned);
    return map;
}

std::vector<ScannedTrack> tracksInCrates(const QSet<QString> &names,
                                         const QList<LoadedCrate> &crates, const TrackMap &map)
{
    std::vector<ScannedTrack> tracks;
    QSet<const ScannedTrack *> seen;
    for (const LoadedCrate &crate : crates) {
        if (!names.contains(crate.name))
            continue;
        for (const QString &path : crate.paths) {
            const ScannedTrack *scanned = map.value(path);
            if (!scanned || seen.contains(scanned))
                continue;
            seen.insert(scanned);
            tracks.push_back(*scanned);
        }
    }
    return tracks;
}

} // namespace tarnwick
