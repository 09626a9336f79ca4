#pragma once

#include "analysis/scan_result.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <memory>

namespace tarnwick {

/// One of the six scored sides of a library.
struct Dimension
{
    enum class Kind { FilesLinks, CuesGrids, Duplicates, TagsGenres, Levels, ExportParity };

    Kind kind = Kind::FilesLinks;
    int score = 0;     ///< 0 to 100
    QString detail;    ///< one line beside the score
    QString jumpTitle; ///< the button that leads to where it can be improved

    /// The text of a kind, shown and used as its identity.
    static QString rawValue(Kind kind);
    QString id() const { return rawValue(kind); }

    bool operator==(const Dimension &) const = default;
};

/// Copies of one track.
struct DuplicateGroup
{
    QUuid id;    ///< fresh at each computation
    QString key; ///< lower-cased artist, "|", lower-cased title: the group's lasting identity
    std::vector<ScannedTrack> members; ///< best copy first
    quint64 reclaimableBytes = 0;      ///< of all members but the first
};

/// The measure of a library, worked out from one scan. Immutable; never touches the disk.
class Derived
{
public:
    /// Leaves out the duplicate groups whose keys are ignored. Shares the scan with the caller.
    explicit Derived(std::shared_ptr<const ScanResult> result,
                     const QSet<QString> &ignoredDupeKeys = {});

    const ScanResult &result() const { return *m_result; }

    int total = 0;
    int onDisk = 0;
    int missing = 0; ///< may overlap with onDisk: a flagged track that is there counts in both
    int withMarkers = 0;
    int withGrid = 0;
    int withGain = 0;
    int withArtist = 0;
    int withGenre = 0;
    int withKey = 0;
    int withBpm = 0;
    int tagsReadable = 0;
    std::vector<DuplicateGroup> duplicateGroups; ///< largest reclaimable first
    int duplicateExcess = 0;                     ///< redundant copies
    quint64 reclaimableBytes = 0;
    quint64 onDiskBytes = 0;
    QList<Dimension> dimensions; ///< in the order of Dimension::Kind
    int score = 0;               ///< 0 to 100

    /// Tracks that are missing, in library order.
    std::vector<ScannedTrack> missingTracks() const;
    /// Tracks on disk without a genre, in library order.
    std::vector<ScannedTrack> untaggedTracks() const;
    /// The lowest dimension; the earliest of equal ones.
    const Dimension &worst() const;
    QString grade() const;
    /// How long a clean-up takes, in minutes; at least 1.
    int estimatedMinutes() const;

private:
    std::shared_ptr<const ScanResult> m_result;
};

} // namespace tarnwick
