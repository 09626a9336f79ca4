#pragma once

#include "analysis/scan_result.h"
#include "export/export_records.h"
#include "foundation/result.h"
#include "serato/loaded_crate.h"

#include <QList>
#include <QSet>

/// Writes a library as an Engine Library, for Denon and Engine DJ hardware: one SQLite database
/// with every track that is on disk, and each crate with an entry as a flat playlist. The schema is
/// a reduced one of our own.
namespace tarnwick::EngineExporter {

/// The database of an export, seen from the folder exported to.
QString databaseIn(const QString &folder);

/// Writes the database from nothing; the folders on the way to it are made if need be. An earlier
/// one is removed first, and is gone if the export fails: what then stands there has the tables and
/// no rows, or is not there. Runs on any thread.
Result<ExportOutcome> exportTo(const std::vector<ScannedTrack> &tracks,
                               const QList<LoadedCrate> &crates, const QString &folder,
                               const ExportProgressFunction &progress);

/// The paths of all tracks of a database; as many as can be read of a damaged one. Never fails.
QSet<QString> readPaths(const QString &databasePath);

} // namespace tarnwick::EngineExporter
