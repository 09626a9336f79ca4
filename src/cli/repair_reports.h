#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runHealth(Session &session);
/// The name behind `--filter` must be known.
Done checkQueue(const CommandLine &line);
Status runQueue(Session &session);
Status runVersions(Session &session);
Status runGenres(Session &session);
Status runLoudness(Session &session);
Status runCandidates(Session &session);

} // namespace tarnwick::cli
