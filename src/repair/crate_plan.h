#pragma once

#include "analysis/crate_hygiene.h"
#include "analysis/versions.h"
#include "safety/change_log.h"

/// What tidying crates and genres amounts to: which tracks, which crates, in which words.
namespace tarnwick::CratePlan {

/// The crates that tracks are filed into. Frozen: users have crates of these names by now.
inline const QString archiveCrate = QStringLiteral("Archive");
inline const QString unsortedCrate = QStringLiteral("Unsorted");

/// The paths of all cuts but the one to keep, as the database has them.
QStringList cutsToArchive(const VersionGroup &group, const QUuid &keeperId);
QString archiveReason(const VersionGroup &group, qsizetype cutCount);
ChangeLog::Change archived(const VersionGroup &group, int added);
QString archiveSummary(const VersionGroup &group, int added);

/// Of two crates, which stays and which goes.
struct Merge
{
    LoadedCrate keep;
    LoadedCrate fold;
};

/// The larger one stays; of two of one size, the first.
Merge mergeOf(const CrateHygiene::Overlap &overlap);
QString mergeReason(const Merge &merge);
QString mergeHoldingReason(const Merge &merge);
ChangeLog::Change merged(const Merge &merge, const QString &holdingId);
QString mergeSummary(const Merge &merge);

QString orphansReason(qsizetype orphanCount);
ChangeLog::Change orphansFiled(int added);
QString orphansSummary(int added);

/// The tracks that carry another spelling of the variant than its canon, in library order.
std::vector<SeratoTrack> tracksToUnify(const std::vector<ScannedTrack> &tracks,
                                       const CrateHygiene::GenreVariant &variant);
QString unifyReason(const CrateHygiene::GenreVariant &variant);
ChangeLog::Change genreUnified(const SeratoTrack &track, const CrateHygiene::GenreVariant &variant);
QString unifySummary(const CrateHygiene::GenreVariant &variant, int count);

} // namespace tarnwick::CratePlan
