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

/// The cuts of one song, by the places of its tracks in a library: small enough to be kept for a
/// large one. Holds for that very list of tracks alone.
struct VersionPlaces
{
    struct Cut
    {
        int place;            ///< of the track in the library
        const QString *label; ///< lasts as long as the process
    };

    std::vector<Cut> cuts; ///< most played first, else in library order
    int first = 0;         ///< the place that comes first in the library; names the song
};

/// The songs among the tracks on disk that are there under at least two titles: exact copies under
/// one title are duplicates, not versions. Largest group first, else in library order.
std::vector<VersionPlaces> versionPlacesOf(const std::vector<ScannedTrack> &tracks);

/// The song with its tracks, under a fresh id.
VersionGroup versionGroupAt(const std::vector<ScannedTrack> &tracks, const VersionPlaces &song);

/// All songs of `versionPlacesOf` with their tracks.
std::vector<VersionGroup> versionGroupsOf(const std::vector<ScannedTrack> &tracks);

} // namespace tarnwick
