#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runGigRun(Session &session);

} // namespace tarnwick::cli
