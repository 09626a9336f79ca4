#pragma once

#include "demo_random.h"
#include "library_plan.h"

#include <QByteArray>

namespace tarnwick::demo {

/// The bytes of a track's audio file: its tag and a moment of silence.
QByteArray audioFile(const TrackPlan &track, Random random);

} // namespace tarnwick::demo
