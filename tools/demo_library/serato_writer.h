#pragma once

#include "library_plan.h"

#include <QByteArray>

namespace tarnwick::demo {

// The bytes of each file of a _Serato_ folder.

/// `database V2`. Tracks carry fields and the file ends with a record that most readers don't know.
/// With no tracks the file holds its version alone.
QByteArray databaseFile(const QList<TrackPlan> &tracks);

/// A file of Subcrates.
QByteArray crateFile(const CratePlan &crate);

/// A file of SmartCrates: a rule on the genre and the tracks that it found.
QByteArray smartCrateFile(QStringView genre, const QStringList &paths);

/// `neworder.pref`, the order of the crates.
QByteArray crateOrderFile(const QList<CratePlan> &crates);

/// A file of History/Sessions.
QByteArray sessionFile(const SessionPlan &session);

} // namespace tarnwick::demo
