#pragma once

#include "app/app_state.h"

/// Filling in genres, through the commands of AppState.
namespace tarnwick::TrackIdActions {

/// Gives every track whose suggestion is sure that genre, by one command for each genre. The views
/// learn of it at the end.
void tagAllReady(AppState &app);

} // namespace tarnwick::TrackIdActions
