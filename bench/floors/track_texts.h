#pragma once

#include "analysis/scan_result.h"

#include <cstdio>
#include <vector>

namespace tarnwick::bench {

/// What writing tracks as text can't do without: each character of each field looked at once and
/// copied in UTF-8 into one reused buffer, between constant names, and the buffer written. Nothing
/// is worked out: fields that are computed from others are stood for by those.
void writeTexts(const std::vector<ScannedTrack> &tracks, std::FILE *stream);

} // namespace tarnwick::bench
