#pragma once

namespace tarnwick::bench {

/// The largest resident memory of this process since the last reset, in bytes.
double peakMemory();

void resetPeakMemory();

} // namespace tarnwick::bench
