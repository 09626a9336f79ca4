#pragma once

#include "app/app_state.h"
#include "screens/gig_run/gig_run_figures.h"

/// A gig run as it goes, through the commands of AppState.
namespace tarnwick::GigRunActions {

/// Whether the run applies what needs no decision.
enum class Fixes { No, Yes };

/// Does the work of one step on the figures of the moment at which the run began, and tells how it
/// ended. A fix that fails says so in a toast; the step counts as done all the same.
GigRunFigures::Outcome runStep(AppState &app, GigRunFigures::Step step, const Derived &derived,
                               Fixes fixes);

} // namespace tarnwick::GigRunActions
