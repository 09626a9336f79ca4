#include "export/export_target.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

// The file names are frozen: an earlier export on a device is found and replaced by them.
const QList<ExportTargetInfo> &allExportTargets()
{
    static const QList<ExportTargetInfo> targets = {
        {ExportTarget::Engine, u"engine"_s, u"Engine DJ SD"_s, u"sdcard"_s, u"Engine Library"_s,
         u"An Engine Library (m.db) for Denon / Engine DJ hardware."_s, CarryOver{}},
        {ExportTarget::Rekordbox, u"rekordbox"_s, u"rekordbox USB"_s, u"externaldrive"_s,
         u"rekordbox.xml"_s, u"A rekordbox collection XML for Pioneer / AlphaTheta gear."_s,
         CarryOver{.stems = false}},
        {ExportTarget::SeratoBackup, u"seratoBackup"_s, u"Serato backup"_s, u"archivebox"_s,
         u"_Serato_ backup"_s, u"A copy of your Serato library files, for safekeeping."_s,
         CarryOver{}},
    };
    return targets;
}

const ExportTargetInfo &infoOf(ExportTarget target)
{
    return allExportTargets().at(int(target));
}

std::optional<ExportTarget> exportTargetFromCaseName(QStringView caseName)
{
    for (const ExportTargetInfo &info : allExportTargets()) {
        if (info.caseName == caseName)
            return info.target;
    }
    return std::nullopt;
}

} // namespace tarnwick
