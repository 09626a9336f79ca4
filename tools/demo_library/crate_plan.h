#pragma once

#include "demo_random.h"
#include "library_plan.h"

namespace tarnwick::demo {

/// What joins the levels of a nested crate's name.
constexpr QStringView crateSeparator = u"%%";

/// Crates by genre with subcrates, crates of single nights, near copies of crates, empty crates,
/// and entries that lead nowhere. About one track in seven is in none.
QList<CratePlan> planCrates(const QList<TrackPlan> &tracks, const QString &home, Random random);

} // namespace tarnwick::demo
