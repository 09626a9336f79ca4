#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runCrates(Session &session);
Status runHygiene(Session &session);
Status runGig(Session &session);

} // namespace tarnwick::cli
