#pragma once

#include "analysis/dimensions.h"
#include "analysis/duplicates.h"
#include "analysis/library_counts.h"
#include "analysis/scan_result.h"

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

private:
    std::shared_ptr<const ScanResult> m_result;
};

} // namespace tarnwick
