#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runSnapshots(Session &session);
Status runChanges(Session &session);
Status runHeld(Session &session);
Status runCues(Session &session);

} // namespace tarnwick::cli
