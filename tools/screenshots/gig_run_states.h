#pragma once

#include "screens/gig_run/gig_run_presenter.h"

#include <functional>

namespace tarnwick {

/// Takes the gig run through a run without fixes, and has `keep` called in its middle and at its
/// end. Stops where `keep` fails.
bool takeGigRunStates(GigRunPresenter &presenter,
                      const std::function<bool(const QString &name)> &keep);

} // namespace tarnwick
