#pragma once

#include "analysis/scan_result.h"

namespace tarnwick {

/// One cut of a song.
struct VersionMember
{
    ScannedTrack track;
    QString cut; ///< a label such as "Extended", or "Original"

    QUuid id() const { return track.id(); }
    quint64 plays() const { return track.track.playCount; }
};

/// A song that is there in more than one cut.
struct VersionGroup
{
    QUuid id;                           ///< fresh at each computation
    QString base;                       ///< display name, such as "Artist — Song"
    std::vector<VersionMember> members; ///< most played first, else in library order
};

/// The songs among the tracks on disk that are there under at least two titles: exact copies under
/// one title are duplicates, not versions. Largest group first, else in library order.
std::vector<VersionGroup> versionGroupsOf(const std::vector<ScannedTrack> &tracks);

} // namespace tarnwick
