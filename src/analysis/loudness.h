#pragma once

#include "analysis/scan_result.h"

namespace tarnwick {

/// Whether the track is on disk with a gain from Serato's analysis.
bool countsForLoudness(const ScannedTrack &scanned);

/// The tracks on disk with a gain from Serato's analysis, in library order. Fewer than those that
/// count as having a gain: a ReplayGain text alone is not enough.
std::vector<ScannedTrack> tracksWithGain(const std::vector<ScannedTrack> &tracks);

/// The mean gain of those tracks, in decibels; 0 without any.
double averageAutogain(const std::vector<ScannedTrack> &tracks);

} // namespace tarnwick
