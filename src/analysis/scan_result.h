#pragma once

#include "serato/serato_library.h"
#include "serato/serato_track.h"

#include <QDateTime>

#include <optional>
#include <vector>

namespace tarnwick {

/// A track of the database with what the scan found on disk.
struct ScannedTrack
{
    SeratoTrack track;
    bool existsOnDisk = false;   ///< a regular file lies at the track's absolute path
    quint64 onDiskSizeBytes = 0; ///< the database's size where the file system gave none
    bool hasMarkers = false;
    bool hasBeatGrid = false;
    bool hasGain = false;
    bool hasReplayGain = false;
    std::optional<double> autogain = std::nullopt; ///< decibels; always finite
    bool tagsRead = false;                         ///< the probe ran and gave an answer

    QUuid id() const { return track.id; }
    /// Serato's own flag counts even where the file is there.
    bool isMissing() const { return !existsOnDisk || track.flaggedMissing; }
    /// A track that isn't there has nothing to be tagged.
    bool isUntagged() const { return existsOnDisk && !track.hasGenre(); }

    bool operator==(const ScannedTrack &) const = default;
};

/// What one scan found.
struct ScanResult
{
    SeratoLibrary::Location location;
    QDateTime scannedAt;              ///< end of the scan, UTC
    std::vector<ScannedTrack> tracks; ///< database order

    int total() const { return int(tracks.size()); }
};

/// How far a scan has come.
struct ScanProgress
{
    QString phase = QStringLiteral("Reading database…");
    int processed = 0;
    int total = 0;
    int filesOnDisk = 0; ///< tracks found so far
    int missing = 0;     ///< tracks not found so far; Serato's flag plays no part

    /// 0 to 1; 0 while the total is 0.
    double fraction() const { return total == 0 ? 0.0 : double(processed) / double(total); }

    bool operator==(const ScanProgress &) const = default;
};

} // namespace tarnwick
