#pragma once

#include "cli/command_table.h"

namespace tarnwick::cli {

Status runSnapshot(Session &session);
Status runRollback(Session &session);
Status runRelink(Session &session);
Status runDrop(Session &session);
Status runResolveDuplicates(Session &session);
/// Without `--batch` there is one track.
Done checkSetGenre(const CommandLine &line);
Status runSetGenre(Session &session);
Status runTagReady(Session &session);
/// A track or `--outliers`, and a gain that is a number.
Done checkNormalize(const CommandLine &line);
Status runNormalize(Session &session);
Status runFixSafe(Session &session);
Status runUndo(Session &session);
Status runUndoEverything(Session &session);
/// A track or `--all`.
Done checkRestoreCues(const CommandLine &line);
Status runRestoreCues(Session &session);

} // namespace tarnwick::cli
