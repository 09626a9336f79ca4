#pragma once

#include "safety/cue_vault.h"

/// What is said of cues and grids that a file has lost.
namespace tarnwick::CueFigures {

QString lossLine(const CueVault::Loss &loss);

} // namespace tarnwick::CueFigures
