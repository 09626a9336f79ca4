#pragma once

#include "export/export_records.h"

#include <QList>

#include <array>

/// What is said of an export: ahead of it, while it runs, once it is done, and long after.
namespace tarnwick::ExportFigures {

/// One kind of work on a track, and whether a target takes it along.
struct Carry
{
    QString name;
    bool carries = false;

    /// "Carries" or "Dropped".
    QString word() const;
};

std::array<Carry, 4> carriesOf(ExportTarget target);
/// What to know about stems; empty where they come along.
QString stemsNote(ExportTarget target);
/// What to know about the hardware; empty where nothing is.
QString hardwareNote(ExportTarget target);

/// The name of the chosen folder, or that one is to be chosen.
QString folderTitle(const QString &folder);
QString exportTitle(int tracksOnDisk);
QString progressLine(const ExportProgress &progress);
QString outcomeLine(const ExportOutcome &outcome);

QString nothingToCompare();

/// One side of a drift.
struct DriftFigure
{
    QString label;
    int count = 0;

    bool isInLine() const { return count < 1; }
};

/// What the library alone has, then what the device alone has.
std::array<DriftFigure, 2> figuresOf(const ExportDrift &drift);

} // namespace tarnwick::ExportFigures
