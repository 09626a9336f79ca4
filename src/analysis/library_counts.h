#pragma once

#include "analysis/scan_result.h"

namespace tarnwick {

/// How much of a library has what. Counted over all tracks, on disk or not, unless told otherwise.
struct LibraryCounts
{
    int total = 0;
    int onDisk = 0;
    int missing = 0; ///< may overlap with onDisk: a flagged track that is there counts in both
    int withMarkers = 0;
    int withGrid = 0;
    int withGain = 0;
    int withArtist = 0;
    int withGenre = 0;
    int withKey = 0;
    int withBpm = 0;
    int tagsReadable = 0;
    int duplicateExcess = 0;      ///< redundant copies
    quint64 reclaimableBytes = 0; ///< held by redundant copies
    quint64 onDiskBytes = 0;      ///< of the tracks on disk

    bool operator==(const LibraryCounts &) const = default;
};

/// All but the two figures of duplicates, which stay 0.
LibraryCounts countsOf(const std::vector<ScannedTrack> &tracks);

} // namespace tarnwick
