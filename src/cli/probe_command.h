#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runProbe(Session &session);

} // namespace tarnwick::cli
