#pragma once

#include "analysis/scan_result.h"
#include "export/export_records.h"

#include <optional>
#include <vector>

namespace tarnwick {

/// Compares the tracks that are on disk with those that an earlier export left in the folder, by
/// their exact paths. Nothing where there is no such export, none that can be read, or none with a
/// track in it; of a backup there is nothing to compare. Never fails.
std::optional<ExportDrift> driftOf(ExportTarget target, const std::vector<ScannedTrack> &tracks,
                                   const QString &folder);

} // namespace tarnwick
