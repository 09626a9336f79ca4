#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runHistory(Session &session);

} // namespace tarnwick::cli
