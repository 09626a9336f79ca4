#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// What a library can be exported to.
enum class ExportTarget { Engine, Rekordbox, SeratoBackup };

/// What the export screen says comes along. A statement of the screen alone: no exporter writes
/// cues, loops or grids.
struct CarryOver
{
    bool cues = true;
    bool loops = true;
    bool grids = true;
    bool stems = true;

    bool operator==(const CarryOver &) const = default;
};

/// What is fixed about a target.
struct ExportTargetInfo
{
    ExportTarget target;
    QString caseName; ///< the name by which the command line calls it
    QString rawValue; ///< shown to the user, and used as its identity
    QString symbol;   ///< name of its icon
    QString fileName; ///< what an export puts into the chosen folder
    QString blurb;
    CarryOver carryOver;

    QString id() const { return rawValue; }
};

/// All targets, in the order of the enumeration.
const QList<ExportTargetInfo> &allExportTargets();

const ExportTargetInfo &infoOf(ExportTarget target);

/// The target of exactly this case name, letter case included.
std::optional<ExportTarget> exportTargetFromCaseName(QStringView caseName);

} // namespace tarnwick
