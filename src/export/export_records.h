#pragma once

#include "export/export_target.h"

#include <QString>

#include <functional>

namespace tarnwick {

/// How far an export has come.
struct ExportProgress
{
    QString phase;
    int written = 0; ///< tracks, or library files of a backup
    int total = 0;

    /// 0 to 1; 0 while the total is 0.
    double fraction() const { return total == 0 ? 0.0 : double(written) / double(total); }

    bool operator==(const ExportProgress &) const = default;
};

/// What an export has written.
struct ExportOutcome
{
    ExportTarget target = ExportTarget::Engine;
    QString path;       ///< the file written; the folder of a backup
    int trackCount = 0; ///< tracks written; of a backup the library files copied
    int crateCount = 0; ///< crates with an entry; of a backup the crate files

    bool operator==(const ExportOutcome &) const = default;
};

/// How far a library and an earlier export of it have come apart, in paths of tracks.
struct ExportDrift
{
    int seratoOnly = 0; ///< on disk in the library, not in the export
    int deviceOnly = 0; ///< in the export alone

    bool operator==(const ExportDrift &) const = default;
};

/// Called on the exporting thread, in order; must not block.
using ExportProgressFunction = std::function<void(const ExportProgress &)>;

} // namespace tarnwick
