#pragma once

#include "analysis/dimensions.h"
#include "analysis/duplicates.h"
#include "analysis/genre_suggestions.h"
#include "analysis/library_counts.h"
#include "analysis/scan_result.h"
#include "analysis/versions.h"

#include <QList>
#include <QSet>
#include <QString>

#include <memory>

namespace tarnwick {

/// The measure of a library, worked out from one scan: its counts, its duplicates and its scores.
/// Immutable; never touches the disk. A copy shares the scan.
class Derived : public LibraryCounts
{
public:
    using VersionMember = tarnwick::VersionMember;
    using VersionGroup = tarnwick::VersionGroup;

    /// Leaves out the duplicate groups whose keys are ignored. Shares the scan with the caller.
    explicit Derived(std::shared_ptr<const ScanResult> result,
                     const QSet<QString> &ignoredDupeKeys = {});

    const ScanResult &result() const { return *m_result; }

    std::vector<DuplicateGroup> duplicateGroups; ///< largest reclaimable first
    QList<Dimension> dimensions;                 ///< in the order of Dimension::Kind
    int score = 0;                               ///< 0 to 100

    /// Tracks that are missing, in library order.
    std::vector<ScannedTrack> missingTracks() const;
    /// Tracks on disk without a genre, in library order.
    std::vector<ScannedTrack> untaggedTracks() const;
    /// The lowest dimension; the earliest of equal ones.
    const Dimension &worst() const;
    QString grade() const { return gradeOf(score); }
    /// How long a clean-up takes, in minutes; at least 1.
    int estimatedMinutes() const { return estimatedMinutesOf(*this); }

    /// The songs on disk in more than one cut, largest group first. Worked out at each call, with
    /// fresh ids.
    std::vector<VersionGroup> versionGroups() const;

    /// What the other tracks of the artist suggest. The first call on a value counts the whole
    /// library, the others look it up; safe on any thread.
    std::optional<GenreSuggestion> genreSuggestion(const ScannedTrack &scanned) const;

    /// Tracks on disk with a gain from Serato's analysis, in library order.
    std::vector<ScannedTrack> tracksWithGain() const;
    /// The mean gain of tracksWithGain(), in decibels; 0 without any.
    double avgAutogain() const { return m_avgAutogain; }
    /// How far the track stands from the library's level, in decibels: avgAutogain() less its gain.
    std::optional<double> loudnessDeviation(const ScannedTrack &scanned) const;
    /// What to write as its correction, in decibels: the negative of the deviation.
    std::optional<double> normalizingGain(const ScannedTrack &scanned) const;

private:
    struct LazyGenreIndex;

    std::shared_ptr<const ScanResult> m_result;
    std::shared_ptr<LazyGenreIndex> m_genreIndex; ///< shared by copies
    double m_avgAutogain = 0.0;                   ///< decibels
};

} // namespace tarnwick
