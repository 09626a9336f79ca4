#include "export/drift.h"

#include "export/engine_exporter.h"
#include "export/rekordbox_exporter.h"

#include <QSet>

#include <algorithm>

namespace tarnwick {

namespace {

QSet<QString> pathsOnDisk(const std::vector<ScannedTrack> &tracks)
{
    QSet<QString> paths;
    paths.reserve(qsizetype(tracks.size()));
    for (const ScannedTrack &scanned : tracks) {
        if (scanned.existsOnDisk)
            paths.insert(scanned.track.absolutePath());
    }
    return paths;
}

/// Empty for no export.
QSet<QString> pathsOnDevice(ExportTarget target, const QString &folder)
{
    switch (target) {
    case ExportTarget::Engine:
        return EngineExporter::readPaths(EngineExporter::databaseIn(folder));
    case ExportTarget::Rekordbox:
        return RekordboxExporter::readPaths(folder).value_or(QSet<QString>());
    case ExportTarget::SeratoBackup:
        break;
    }
    return {};
}

} // namespace

std::optional<ExportDrift> driftOf(ExportTarget target, const std::vector<ScannedTrack> &tracks,
                                   const QString &folder)
{
    const QSet<QString> device = pathsOnDevice(target, folder);
    if (device.isEmpty())
        return std::nullopt;
    const QSet<QString> serato = pathsOnDisk(tracks);
    const auto isOnDevice = [&](const QString &path) { return device.contains(path); };
    const auto shared = std::count_if(serato.begin(), serato.end(), isOnDevice);
    return ExportDrift{.seratoOnly = int(serato.size() - shared),
                       .deviceOnly = int(device.size() - shared)};
}

} // namespace tarnwick
