#pragma once

#include "screens/components/tint.h"
#include "screens/score/score_figures.h"

namespace tarnwick {

/// The colour in which a score is shown.
inline Tint::Value tintOfScore(int score)
{
    switch (ScoreFigures::bandOf(score)) {
    case ScoreFigures::Band::Good:
        return Tint::Good;
    case ScoreFigures::Band::Warn:
        return Tint::Warn;
    case ScoreFigures::Band::Poor:
        return Tint::Accent;
    }
    Q_UNREACHABLE();
}

} // namespace tarnwick
