#pragma once

#include "analysis/scan_result.h"
#include "safety/change_entry.h"
#include "serato/document_record.h"

#include <optional>

/// What taking back a change of the log rests on.
namespace tarnwick::UndoPlan {

/// The first track with exactly this path; null if there is none.
const ScannedTrack *trackAtPath(const ScanResult &result, const QString &relativePath);

/// The first track whose file has this name; null if there is none. An entry knows no more than the
/// name: of two files of one name, the first one is meant.
const ScannedTrack *trackNamed(const ScanResult &result, const QString &fileName);

/// The genre ahead of the change; the mark of an empty one stands for the empty text.
QString genreBefore(const ChangeEntry &entry);

/// The record of a track as a snapshot's database holds it; nothing where the snapshot can't be
/// read or has no such track. The path may begin with a slash.
std::optional<DocumentRecord> recordInSnapshot(const QString &snapshotId, const QString &path);

/// The track of a record as a scan would give it without a look into its file.
ScannedTrack unscannedTrack(const DocumentRecord &record);

} // namespace tarnwick::UndoPlan
