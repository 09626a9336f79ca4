#pragma once

#include "analysis/scan_result.h"
#include "serato/loaded_crate.h"

#include <QHash>
#include <QList>
#include <QSet>

namespace tarnwick {

/// The tracks of a scan by the form of their path that crates use, no leading slash. Points into
/// the scan result, and is good for as long as that one stands.
using TrackMap = QHash<QString, const ScannedTrack *>;

/// Of several tracks with one path, the last.
TrackMap trackMapOf(const std::vector<ScannedTrack> &tracks);

/// The tracks of the crates so named, crate by crate in their order, each path once, where it is
/// first met. A path with no track, and a name that no crate has, leave no trace.
std::vector<ScannedTrack> tracksInCrates(const QSet<QString> &names,
                                         const QList<LoadedCrate> &crates, const TrackMap &map);

} // namespace tarnwick
