#include "analysis/library_counts.h"

namespace tarnwick {

LibraryCounts countsOf(const std::vector<ScannedTrack> &tracks)
{
    LibraryCounts counts{.total = int(tracks.size())};
    for (const ScannedTrack &scanned : tracks) {
        counts.onDisk += scanned.existsOnDisk;
        counts.missing += scanned.isMissing();
        counts.withMarkers += scanned.hasMarkers;
        counts.withGrid += scanned.hasBeatGrid;
        counts.withGain += scanned.hasGain;
        counts.withArtist += scanned.track.hasArtist();
        counts.withGenre += scanned.track.hasGenre();
        counts.withKey += scanned.track.hasKey();
        counts.withBpm += scanned.track.hasBpm();
        counts.tagsReadable += scanned.tagsRead;
        if (scanned.existsOnDisk)
            counts.onDiskBytes += scanned.onDiskSizeBytes;
    }
    return counts;
}

} // namespace tarnwick
