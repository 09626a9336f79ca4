#include "screens/export/export_figures.h"

#include "foundation/paths.h"

using namespace Qt::StringLiterals;

namespace tarnwick::ExportFigures {

QString Carry::word() const
{
    return carries ? u"Carries"_s : u"Dropped"_s;
}

std::array<Carry, 4> carriesOf(ExportTarget target)
{
    const CarryOver carried = infoOf(target).carryOver;
    return {Carry{u"Hot cues"_s, carried.cues}, Carry{u"Loops"_s, carried.loops},
            Carry{u"Beat grids"_s, carried.grids}, Carry{u"Stems"_s, carried.stems}};
}

QString stemsNote(ExportTarget target)
{
    return infoOf(target).carryOver.stems
               ? QString()
               : u"rekordbox has no stems format — everything else transfers."_s;
}

QString hardwareNote(ExportTarget target)
{
    return target == ExportTarget::Engine
               ? u"Engine's schema varies by version — confirm the library opens on your hardware "
                 "before a gig."_s
               : QString();
}

QString folderTitle(const QString &folder)
{
    return folder.isEmpty() ? u"Choose destination…"_s : lastPathComponent(folder);
}

QString exportTitle(int tracksOnDisk)
{
    return u"Export %1 tracks"_s.arg(tracksOnDisk);
}

QString progressLine(const ExportProgress &progress)
{
    return u"%1 of %2"_s.arg(progress.written).arg(progress.total);
}

QString outcomeLine(const ExportOutcome &outcome)
{
    return u"%1 tracks · %2 crates → %3"_s.arg(outcome.trackCount)
        .arg(outcome.crateCount)
        .arg(lastPathComponent(outcome.path));
}

QString nothingToCompare()
{
    return u"No previous export here yet — nothing to compare."_s;
}

std::array<DriftFigure, 2> figuresOf(const ExportDrift &drift)
{
    return {DriftFigure{u"Serato only"_s, drift.seratoOnly},
            DriftFigure{u"Device only"_s, drift.deviceOnly}};
}

} // namespace tarnwick::ExportFigures
