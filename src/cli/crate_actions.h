#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runArchiveVersions(Session &session);
Status runMergeCrates(Session &session);
Status runFileOrphans(Session &session);
Status runUnifyGenre(Session &session);

} // namespace tarnwick::cli
