#pragma once

#include "analysis/duplicates.h"

#include <QStringList>

/// What is said of copies of a track.
namespace tarnwick::DuplicateFigures {

QString copies(const DuplicateGroup &group);
QString reclaimable(const DuplicateGroup &group);

/// What a copy has of its own: a grid, cues, a bit rate.
QStringList tagsOf(const ScannedTrack &member);

} // namespace tarnwick::DuplicateFigures
