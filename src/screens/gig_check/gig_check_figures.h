#pragma once

#include "analysis/crate_tracks.h"
#include "analysis/gig_check.h"
#include "platform/volumes.h"

#include <QStringList>

/// What is said of a set and of where it goes.
namespace tarnwick::GigCheckFigures {

/// What stands for a destination until one is chosen.
QString noDestination();
/// Where a set can go: two fixed ways, then the drives.
QStringList destinations(const QList<platform::Volume> &volumes);

QString picked(qsizetype crates);

/// What a check comes to, without the tracks that it went over.
struct Report
{
    int tracks = 0;
    GigCheck::Verdict verdict = GigCheck::Verdict::Ready;
    int blockerCount = 0; ///< of all blockers
    int polishCount = 0;  ///< likewise
    QList<GigCheck::Check> blockers;
    QList<GigCheck::Check> polish;
};

Report reportOf(const GigCheck &check);
/// The report on the set that these crates make up. Goes over the whole library; looks at no file.
Report reportOf(const ScanResult &result, const QList<LoadedCrate> &crates,
                const QSet<QString> &picked);

QString trackCount(const Report &report);
/// What the verdict comes to, in one sentence.
QString sentence(const Report &report, const QString &destination);

} // namespace tarnwick::GigCheckFigures
