#pragma once

#include "analysis/versions.h"

/// What is said of the cuts of a song.
namespace tarnwick::VersionFigures {

QString cuts(const VersionGroup &group);
QString plays(quint64 plays);

/// The cut to keep where nobody has chosen: the most played, of equal ones the first. A null id
/// without members.
QUuid suggestedKeeper(const VersionGroup &group);

} // namespace tarnwick::VersionFigures
