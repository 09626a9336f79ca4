#pragma once

#include "export/export_records.h"
#include "foundation/result.h"
#include "serato/serato_library.h"

/// Copies what a snapshot holds of a library out to a folder of the user's choice: the library's
/// own files, no audio.
namespace tarnwick::SeratoBackup {

/// The folder of a backup, seen from the folder exported to.
QString backupIn(const QString &folder);

/// An earlier backup in the folder is gone before the copying begins. What the library doesn't have
/// is left out. The first item that can't be copied ends the backup; what was copied by then stays.
/// Serato may be running. Runs on any thread.
Result<ExportOutcome> exportTo(const SeratoLibrary::Location &location, const QString &folder,
                               const ExportProgressFunction &progress);

} // namespace tarnwick::SeratoBackup
