// Cuts, crates and orphans into crate files, and one spelling for a genre.

#include "app/app_state.h"
#include "platform/files.h"
#include "platform/folder_lock.h"
#include "repair/crate_plan.h"
#include "repair/tag_plan.h"
#include "repair/write_run.h"
#include "serato/crate_writer.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

const QString crateRefusal = u"Close Serato first."_s;

bool unify(WriteRun &run, const SeratoTrack &track, const CrateHygiene::GenreVariant &variant)
{
    const bool changed = run.editDatabase([&](SeratoDocument &document) {
        return document.setText(track.relativePath, TagPlan::genreField, variant.canon);
    });
    if (!changed)
        return false;
    run.patch(track.id,
              [canon = variant.canon](ScannedTrack &found) { found.track.genre = canon; });
    run.log(CratePlan::genreUnified(track, variant));
    return true;
}

} // namespace

Result<int> AppState::addToCrate(const QStringList &paths, const QString &name)
{
    const QString library = m_result->location.folderPath();
    const platform::FolderLock lock(library, platform::FolderLock::Kind::Exclusive);
    // Else the folder would be made anew, on another disk, where a drive has gone from its place.
    if (!platform::isFolder(library))
        return failure(u"The library isn't at “%1” any more."_s.arg(library));
    ++m_crateWrites;
    return CrateWriter::addTracks(paths, name, m_result->location);
}

void AppState::archiveVersions(const VersionGroup &group, const QUuid &keeperId)
{
    if (!mayWrite(u"Close Serato before writing crates."_s))
        return;
    const QStringList cuts = CratePlan::cutsToArchive(group, keeperId);
    if (cuts.isEmpty())
        return;
    WriteRun run(*this);
    run.snapshot(CratePlan::archiveReason(group, cuts.size()));
    const auto added = addToCrate(cuts, CratePlan::archiveCrate);
    if (!run.wentWell(added))
        return;
    run.log(CratePlan::archived(group, *added));
    // The crates stay as they were last read: the screen of versions shows none.
    run.succeed(CratePlan::archiveSummary(group, *added));
}

void AppState::mergeCrates(const CrateHygiene::Overlap &overlap)
{
    if (!mayWriteOrRefuse(crateRefusal))
        return;
    const CratePlan::Merge merge = CratePlan::mergeOf(overlap);
    WriteRun run(*this);
    run.snapshot(CratePlan::mergeReason(merge));
    if (!run.wentWell(addToCrate(merge.fold.paths, merge.keep.name)))
        return;
    const auto held =
        m_holding.hold(merge.fold.url.toLocalFile(), CratePlan::mergeHoldingReason(merge));
    if (!run.wentWell(held))
        return;
    run.log(CratePlan::merged(merge, held->id));
    reloadCrates();
    run.succeed(CratePlan::mergeSummary(merge));
}

void AppState::fileOrphans(const QStringList &paths)
{
    if (!mayWriteOrRefuse(crateRefusal) || paths.isEmpty())
        return;
    WriteRun run(*this);
    run.snapshot(CratePlan::orphansReason(paths.size()));
    const auto added = addToCrate(paths, CratePlan::unsortedCrate);
    if (!run.wentWell(added))
        return;
    run.log(CratePlan::orphansFiled(*added));
    reloadCrates();
    run.succeed(CratePlan::orphansSummary(*added));
}

void AppState::unifyGenre(const CrateHygiene::GenreVariant &variant)
{
    if (!mayWriteOrRefuse(crateRefusal))
        return;
    const std::vector<SeratoTrack> tracks = CratePlan::tracksToUnify(m_result->tracks, variant);
    if (tracks.empty())
        return;
    WriteRun run(*this);
    run.snapshot(CratePlan::unifyReason(variant));
    int count = 0;
    for (const SeratoTrack &track : tracks)
        count += unify(run, track, variant) ? 1 : 0;
    run.succeed(CratePlan::unifySummary(variant, count));
}

} // namespace tarnwick
