#pragma once

#include "analysis/derived.h"
#include "repair/gain_item.h"

#include <vector>

/// How far tracks stand from the level of the library.
namespace tarnwick::LoudnessFigures {

/// From this deviation on, in decibels either way, a track stands out.
inline constexpr double outlierDeviation = 1.5;

/// So many rows are shown; the others are only counted.
inline constexpr size_t mostRows = 50;

/// A track on disk with a gain, and how far it stands from the library's level.
struct Standing
{
    size_t index = 0;     ///< of the track in the result
    double deviation = 0; ///< decibels; positive is louder

    bool operator==(const Standing &) const = default;
};

/// The tracks with a gain, in library order.
std::vector<Standing> tracksInLibraryOrder(const Derived &derived);

/// The same, the furthest from the library's level first; equal ones in library order.
std::vector<Standing> tracks(const Derived &derived);

bool isOutlier(double deviation);

/// Those of the tracks that stand out.
std::vector<Standing> outliers(const std::vector<Standing> &tracks);

/// What levels them, for each that has a gain; also for those that bear a gain tag already.
std::vector<GainItem> levelling(const Derived &derived, const std::vector<Standing> &outliers);

/// Decibels with their sign: "+1.5 dB".
QString deviationText(double deviation);

/// What the button says that levels a track: "Level -1.5".
QString levelTitle(double gain);

/// "-2.1 dB".
QString averageText(const Derived &derived);

} // namespace tarnwick::LoudnessFigures
