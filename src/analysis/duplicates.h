#pragma once

#include "analysis/scan_result.h"

#include <QSet>

namespace tarnwick {

/// Copies of one track. What makes two tracks copies is their artist and title alone: not the
/// length, the bit rate, the album or the path.
struct DuplicateGroup
{
    QUuid id;    ///< fresh at each computation
    QString key; ///< lower-cased artist, "|", lower-cased title: the group's lasting identity
    std::vector<ScannedTrack> members; ///< best copy first
    quint64 reclaimableBytes = 0;      ///< of all members but the first
};

/// The copies among the tracks on disk that have a title, largest reclaimable first. Keys in
/// `ignoredKeys` are left out.
std::vector<DuplicateGroup> duplicateGroupsOf(const std::vector<ScannedTrack> &tracks,
                                              const QSet<QString> &ignoredKeys);

} // namespace tarnwick
