#pragma once

#include "analysis/scan_result.h"
#include "serato/loaded_crate.h"

#include <QList>

#include <memory>

namespace tarnwick::bench {

/// A made-up library as a scan would leave it in memory: artists with a dozen tracks each and a
/// favourite genre, a quarter of the titles in some cut, one track in 25 a copy of another, one in
/// 30 with letters beyond ASCII, one in 20 not on disk. Repeated texts are shared. The same count
/// gives the same library.
std::shared_ptr<const ScanResult> generatedLibrary(int trackCount);

/// Crates of `pathCount` paths of such a library: half of each a run of neighbours, half drawn from
/// anywhere, and each tenth crate nearly the one ahead of it.
QList<LoadedCrate> generatedCrates(const ScanResult &library, int crateCount, int pathCount);

} // namespace tarnwick::bench
