#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// An absolute folder in the database's form: without its leading slash.
QString withoutLeadingSlash(const QString &path);

/// Gives each track a file of its own in one of the places where a DJ keeps music, and each moved
/// file its new place, under the same name. No two paths differ in letter case alone.
void planPaths(QList<TrackPlan> &tracks, const QString &home, Random random);

} // namespace tarnwick::demo
