#pragma once

#include "analysis/scan_result.h"
#include "foundation/result.h"

#include <functional>

/// Turns a library's folder into a ScanResult. Reads only; the one place that touches the audio
/// files during a scan.
namespace tarnwick::LibraryScanner {

enum class ReadTags { No, Yes };

/// Called on the scanning thread, in order; must not block.
using ProgressFunction = std::function<void(const ScanProgress &)>;

/// One sequential pass over the tracks in database order. Fails only where the database file can't
/// be read; a damaged one gives the tracks ahead of the damage.
Result<ScanResult> scan(const SeratoLibrary::Location &location, ReadTags readTags,
                        const ProgressFunction &progress);

} // namespace tarnwick::LibraryScanner
