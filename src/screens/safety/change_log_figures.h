#pragma once

#include "safety/change_entry.h"

/// What is said of an entry of the change log.
namespace tarnwick::ChangeLogFigures {

/// Whether, and for how long, the change can be taken back.
QString reversibility(const ChangeEntry &entry, const QDateTime &now = platform::now());

/// Whether at least one can be taken back now.
bool anyReversible(const QList<ChangeEntry> &entries, const QDateTime &now = platform::now());

} // namespace tarnwick::ChangeLogFigures
