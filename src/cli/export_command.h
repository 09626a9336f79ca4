#pragma once

#include "cli/command_table.h"
#include "foundation/result.h"

namespace tarnwick::cli {

/// Whether the first argument names a target.
Done checkExportTarget(const CommandLine &line);

Status runExport(Session &session);
Status runDrift(Session &session);

} // namespace tarnwick::cli
