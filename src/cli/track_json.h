#pragma once

#include "analysis/scan_result.h"
#include "foundation/json_writer.h"

namespace tarnwick::cli {

/// One track as a JSON object: every field of the database's record and of the scan, and what is
/// computed from them.
void writeTrack(JsonWriter &json, const ScannedTrack &scanned);

} // namespace tarnwick::cli
