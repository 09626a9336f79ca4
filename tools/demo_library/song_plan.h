#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// `count` tracks with all their metadata: songs of a crowd of artists, some in several versions.
/// No two have both the same artist and the same title; paths and tags are still to be planned.
QList<TrackPlan> planSongs(int count, Random random);

} // namespace tarnwick::demo
