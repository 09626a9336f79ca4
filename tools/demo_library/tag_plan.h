#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// The size up to which small tags are padded, in bytes, the header included.
constexpr int smallTagSize = 4096;

/// Gives each track its tag: most are analysed, many have cues and a grid, some a ReplayGain text,
/// artwork or padding.
void planTags(QList<TrackPlan> &tracks, TagSizes sizes, Random random);

} // namespace tarnwick::demo
