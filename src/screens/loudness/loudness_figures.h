#pragma once

#include "analysis/derived.h"
#include "repair/gain_item.h"

#include <vector>

/// How far tracks stand from the level of the library.
namespace tarnwick::LoudnessFigures {

/// From this deviation on, in decibels either way, a track stands out.
inline constexpr double outlierDeviation = 1.5;

/// The tracks with a gain, the furthest from the library's level first.
std::vector<ScannedTrack> tracks(const Derived &derived);

bool isOutlier(const Derived &derived, const ScannedTrack &track);

/// Those of them that stand out.
std::vector<ScannedTrack> outliers(const Derived &derived, const std::vector<ScannedTrack> &tracks);

/// What levels them, for each that has a gain; also for those that bear a gain tag already.
std::vector<GainItem> levelling(const Derived &derived, const std::vector<ScannedTrack> &outliers);

} // namespace tarnwick::LoudnessFigures
