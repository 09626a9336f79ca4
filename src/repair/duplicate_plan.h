#pragma once

#include "analysis/duplicates.h"
#include "safety/change_log.h"

/// What resolving a group of duplicates amounts to.
namespace tarnwick::DuplicatePlan {

/// The members that go, in member order; all of them where none has the keeper's id.
std::vector<ScannedTrack> losers(const DuplicateGroup &group, const QUuid &keeperId);

QString reason(const DuplicateGroup &group, size_t loserCount);
/// Why a loser's file is held. Names the first member, whichever is kept: it is the group's name.
QString holdingReason(const DuplicateGroup &group);

/// The entry of a loser whose file is held, or stays where it is.
ChangeLog::Change resolved(const ScannedTrack &loser, const std::optional<QString> &holdingId);

QString summary(int movedFiles, quint64 bytes);

} // namespace tarnwick::DuplicatePlan
