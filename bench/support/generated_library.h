#pragma once

#include "analysis/scan_result.h"

#include <memory>

namespace tarnwick::bench {

/// A made-up library as a scan would leave it in memory: artists with a dozen tracks each and a
/// favourite genre, a quarter of the titles in some cut, one track in 25 a copy of another, one in
/// 30 with letters beyond ASCII, one in 20 not on disk. Repeated texts are shared. The same count
/// gives the same library.
std::shared_ptr<const ScanResult> generatedLibrary(int trackCount);

} // namespace tarnwick::bench
