#pragma once

#include "cli/command_table.h"
#include "foundation/result.h"

namespace tarnwick::cli {

/// Whether `--opt-in` is on or off.
Done checkSignalSet(const CommandLine &line);
/// Whether `--window` is a number of days.
Done checkSignalLanding(const CommandLine &line);

Status runSignalLanes(Session &session);
Status runSignalSet(Session &session);
Status runSignalLanding(Session &session);
Status runSignalContribute(Session &session);
Status runSignalLeave(Session &session);

} // namespace tarnwick::cli
