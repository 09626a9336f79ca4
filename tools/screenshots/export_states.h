#pragma once

#include "app/app_state.h"
#include "screens/export/export_presenter.h"

#include <functional>

namespace tarnwick {

/// Takes the export screen through what it can look like, with real exports into a folder that goes
/// away, and has `keep` called in each state. Stops where `keep` fails.
bool takeExportStates(AppState &app, ExportPresenter &presenter,
                      const std::function<bool(const QString &name)> &keep);

} // namespace tarnwick
