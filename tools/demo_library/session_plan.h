#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// Gigs of the last five months ahead of `today`, and raises the play counts of what was played.
/// Some plays are of tracks that left the library since, and some have no title.
QList<SessionPlan> planSessions(QList<TrackPlan> &tracks, const QString &home, QDate today,
                                Random random);

} // namespace tarnwick::demo
