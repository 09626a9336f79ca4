#pragma once

#include "analysis/scan_result.h"

#include <QStringList>

#include <vector>

namespace tarnwick {

/// What exporters take of a library: the tracks that are on disk, numbered from 1 in library order,
/// and found again by their path. Refers to the tracks given, which must outlive it.
class TracksOnDisk
{
public:
    explicit TracksOnDisk(const std::vector<ScannedTrack> &tracks);

    int count() const { return int(m_tracks.size()); }
    /// The track of a number from 1 to `count`.
    const SeratoTrack &track(int number) const { return *m_tracks[size_t(number) - 1]; }

    /// The number of the track at a path without a leading slash, 0 for none. Of several tracks
    /// with one path, the last.
    int numberOf(QStringView path) const;
    /// The numbers of the tracks at such paths, in their order; what is not on disk is left out.
    std::vector<int> numbersOf(const QStringList &paths) const;
    /// The number of different paths.
    int pathCount() const { return m_pathCount; }

private:
    /// A place of the table: open addressing, the size being a power of two.
    struct Slot
    {
        quint32 hash = 0;
        int number = 0; ///< 0 for a free place
    };

    size_t slotOf(QStringView path, quint32 hash) const;
    void insert(int number);

    std::vector<const SeratoTrack *> m_tracks;
    std::vector<Slot> m_slots;
    int m_pathCount = 0;
};

/// The path of a track in the form in which crates are compared with it: no leading slash.
QStringView keyOf(const SeratoTrack &track);

} // namespace tarnwick
