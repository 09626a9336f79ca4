#pragma once

#include "library_plan.h"

#include <QByteArray>
#include <QList>

#include <array>

namespace tarnwick::demo {

struct ExpectedGroup
{
    QString key;
    QStringList members; ///< paths, best copy first
    quint64 reclaimableBytes = 0;
};

/// What a scan of the written library should find, worked out from the plan alone.
struct Expectations
{
    int total = 0;
    int onDisk = 0;
    int missing = 0;
    int withMarkers = 0;
    int withGrid = 0;
    int withGain = 0;
    int withArtist = 0;
    int withGenre = 0;
    int withKey = 0;
    int withBpm = 0;
    int tagsReadable = 0;
    int duplicateExcess = 0;
    quint64 reclaimableBytes = 0;
    quint64 onDiskBytes = 0;
    QList<ExpectedGroup> groups;     ///< most reclaimable bytes first
    std::array<int, 6> dimensions{}; ///< files, grids, duplicates, tags, levels, export
    int score = 0;
    int orphans = 0;
    int plays = 0;
};

/// The plan must have been written: sizes of files count.
Expectations expectationsOf(const LibraryPlan &plan);

/// The expectations, and the plan's crates, sessions, moved and gone files, as a JSON object.
QByteArray expectationsJson(const LibraryPlan &plan);

} // namespace tarnwick::demo
