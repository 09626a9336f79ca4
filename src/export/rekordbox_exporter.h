#pragma once

#include "analysis/scan_result.h"
#include "export/export_records.h"
#include "foundation/result.h"
#include "serato/loaded_crate.h"

#include <QList>
#include <QSet>

#include <optional>

/// Writes a library as the collection that rekordbox imports: every track that is on disk, and each
/// crate with an entry as a playlist. Metadata alone: the one tempo marker of a track comes from
/// its tempo, not from its grid.
namespace tarnwick::RekordboxExporter {

/// Writes `rekordbox.xml` into the folder, which is made if need be, in the place of an earlier
/// one: a failure leaves that as it was. Runs on any thread.
Result<ExportOutcome> exportTo(const std::vector<ScannedTrack> &tracks,
                               const QList<LoadedCrate> &crates, const QString &folder,
                               const ExportProgressFunction &progress);

/// The paths that the `rekordbox.xml` of a folder lists. Nothing where there is none, or one that
/// is no UTF-8. Takes any text that holds the attributes which `exportTo` writes.
std::optional<QSet<QString>> readPaths(const QString &folder);

} // namespace tarnwick::RekordboxExporter
