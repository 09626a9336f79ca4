#pragma once

#include "analysis/scan_result.h"

namespace tarnwick {

/// A gain to be written into the file of a track.
struct GainItem
{
    ScannedTrack track;
    double gain = 0.0; ///< decibels
};

} // namespace tarnwick
