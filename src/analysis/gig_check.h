#pragma once

#include "analysis/scan_result.h"
#include "foundation/screen.h"

#include <QList>

#include <memory>

namespace tarnwick {

/// Can this set be played tonight? A list of tracks reduced to a few named checks in two tiers:
/// what can stop a track from playing properly, and what a careful DJ would still fix.
class GigCheck
{
public:
    enum class Verdict { Ready, GoodEnough, NotYet };

    /// A finding and where to mend it.
    struct Check
    {
        QUuid id = freshIdentity();
        QString title;
        int count = 0; ///< tracks; surplus copies for the check of duplicates
        bool blocker = false;
        Screen jump = Screen::LibraryScore;
    };

    explicit GigCheck(std::vector<ScannedTrack> tracks);
    /// Shares the tracks, for a whole library.
    explicit GigCheck(std::shared_ptr<const std::vector<ScannedTrack>> tracks);

    QList<Check> blockers; ///< those with a count of at least 1
    QList<Check> polish;   ///< likewise

    const std::vector<ScannedTrack> &tracks() const { return *m_tracks; }
    int totalTracks() const { return int(m_tracks->size()); }
    int blockerCount() const;
    int polishCount() const;
    Verdict verdict() const;

    /// The text of a verdict, shown as it stands.
    static QString rawValue(Verdict verdict);

private:
    std::shared_ptr<const std::vector<ScannedTrack>> m_tracks;
};

} // namespace tarnwick
