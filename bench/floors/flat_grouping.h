#pragma once

#include "analysis/scan_result.h"

namespace tarnwick::bench {

/// What grouping tracks by folded artist and title can't do without: each key folded once, for
/// ASCII only, into one buffer, and looked up in one flat table. Returns how many tracks share
/// their key with an earlier one.
int flatGrouping(const std::vector<ScannedTrack> &tracks);

} // namespace tarnwick::bench
