#pragma once

#include "analysis/dimensions.h"
#include "foundation/screen.h"

/// What the Library score adds to the dimensions themselves.
namespace tarnwick::ScoreFigures {

/// How a score stands, in the three colours that scores are shown in.
enum class Band {
    Good, ///< from 80
    Warn, ///< from 55
    Poor,
};

Band bandOf(int score);

/// The screen on which a dimension can be improved.
Screen screenFor(Dimension::Kind kind);

/// The line below the grade. It always says that the scan was just now.
QString sourceLine(const QString &volumeName, int total);

} // namespace tarnwick::ScoreFigures
