#pragma once

#include "app/app_state.h"
#include "screens/fix_queue/fix_queue_figures.h"

/// Settling issues of the queue, through the commands of AppState.
namespace tarnwick::FixActions {

/// Runs the fix of an issue of these figures; nothing where it has none.
void fix(AppState &app, const Derived &derived, const FixQueueFigures::Issue &issue);

/// Runs the fix of every safe issue, in queue order. The views learn of it at the end.
void fixAllSafe(AppState &app);

} // namespace tarnwick::FixActions
