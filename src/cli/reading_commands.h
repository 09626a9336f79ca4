#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runLibraries(Session &session);
Status runScan(Session &session);
Status runScore(Session &session);

} // namespace tarnwick::cli
