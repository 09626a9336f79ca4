#pragma once

#include "safety/change_log.h"
#include "serato/serato_track.h"
#include "serato/tag.h"

/// What writing genres and gains amounts to.
namespace tarnwick::TagPlan {

/// The field of the database that holds the genre.
inline constexpr Tag genreField = "tgen"_tag;

/// Stands in the log for an empty genre, so that the entry shows something; undo knows it.
QString emptyGenreMark();

QString genreReason(const SeratoTrack &track);
QString genreBatchReason(size_t trackCount, const QString &genre);
ChangeLog::Change genreSet(const SeratoTrack &track, const QString &genre);
QString genreBatchSummary(int count, const QString &genre);

QString gainReason(const SeratoTrack &track);
QString gainBatchReason(size_t trackCount);
/// The gain is in decibels.
ChangeLog::Change gainWritten(const SeratoTrack &track, double gain);
ChangeLog::Change gainWrittenInBatch(const SeratoTrack &track, double gain);
QString gainBatchSummary(int count);

} // namespace tarnwick::TagPlan
