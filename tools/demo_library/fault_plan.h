#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// Lets happen to a tidy library what happens in years of use: files that moved or went, files with
/// no tag, other formats, lost genres and artists, levels far off. From 20 tracks on, each fault
/// occurs at least once. Missing files get their fate only; the path plan finds moved ones a place.
void addFaults(QList<TrackPlan> &tracks, Random random);

} // namespace tarnwick::demo
