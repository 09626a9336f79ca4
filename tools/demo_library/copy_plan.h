#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// How many tracks of a library of that size are further copies of others.
int numberOfCopies(int tracks);

/// Adds further copies of tracks drawn at random, one to three of each: other bit rate, other day,
/// artist and title the same but for letter case, blanks or the field that holds the artist.
void addCopies(QList<TrackPlan> &tracks, int copies, Random random);

} // namespace tarnwick::demo
