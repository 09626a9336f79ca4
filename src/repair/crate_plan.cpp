#include "repair/crate_plan.h"

using namespace Qt::StringLiterals;

namespace tarnwick::CratePlan {

namespace {

/// "1 cut", "2 cuts".
QString counted(int count, const QString &noun)
{
    return QString::number(count) + u' ' + noun + (count == 1 ? u""_s : u"s"_s);
}

} // namespace

QStringList cutsToArchive(const VersionGroup &group, const QUuid &keeperId)
{
    QStringList paths;
    for (const VersionMember &member : group.members) {
        if (member.id() != keeperId)
            paths << member.track.track.relativePath;
    }
    return paths;
}

QString archiveReason(const VersionGroup &group, qsizetype cutCount)
{
    return u"Before: archive %1 cuts of "_s.arg(cutCount) + group.base;
}

ChangeLog::Change archived(const VersionGroup &group, int added)
{
    return {.kind = ChangeEntry::Kind::Archive,
            .target = group.base,
            .detail = u"Filed "_s + counted(added, u"alternate cut"_s) +
                      u" into the Archive crate (kept in library)"_s};
}

QString archiveSummary(const VersionGroup &group, int added)
{
    return u"Archived "_s + counted(added, u"cut"_s) + u" of "_s + group.base;
}

Merge mergeOf(const CrateHygiene::Overlap &overlap)
{
    if (overlap.b.count() > overlap.a.count())
        return {.keep = overlap.b, .fold = overlap.a};
    return {.keep = overlap.a, .fold = overlap.b};
}

QString mergeReason(const Merge &merge)
{
    return u"Before: merge "_s + merge.fold.name + u" → "_s + merge.keep.name;
}

QString mergeHoldingReason(const Merge &merge)
{
    return u"Merged into "_s + merge.keep.name;
}

ChangeLog::Change merged(const Merge &merge, const QString &holdingId)
{
    // One way of speaking for any number of tracks.
    return {.kind = ChangeEntry::Kind::Archive,
            .target = merge.fold.name,
            .detail = u"Merged %1 tracks into "_s.arg(merge.fold.count()) + merge.keep.name +
                      u"; folded crate held 30 days"_s,
            .holdingId = holdingId};
}

QString mergeSummary(const Merge &merge)
{
    return u"Merged "_s + merge.fold.name + u" into "_s + merge.keep.name;
}

QString orphansReason(qsizetype orphanCount)
{
    return u"Before: file %1 orphans → "_s.arg(orphanCount) + unsortedCrate;
}

ChangeLog::Change orphansFiled(int added)
{
    return {.kind = ChangeEntry::Kind::Archive,
            .target = unsortedCrate,
            .detail =
                u"Filed "_s + counted(added, u"orphan track"_s) + u" into the Unsorted crate"_s};
}

QString orphansSummary(int added)
{
    return u"Filed %1 orphans into Unsorted"_s.arg(added);
}

std::vector<SeratoTrack> tracksToUnify(const std::vector<ScannedTrack> &tracks,
                                       const CrateHygiene::GenreVariant &variant)
{
    std::vector<SeratoTrack> found;
    for (const ScannedTrack &scanned : tracks) {
        const SeratoTrack &track = scanned.track;
        if (track.hasGenre() && track.genre != variant.canon &&
            variant.variants.contains(track.genre))
            found.push_back(track);
    }
    return found;
}

QString unifyReason(const CrateHygiene::GenreVariant &variant)
{
    return u"Before: unify genre → "_s + variant.canon;
}

ChangeLog::Change genreUnified(const SeratoTrack &track, const CrateHygiene::GenreVariant &variant)
{
    return {.kind = ChangeEntry::Kind::Tag,
            .target = track.fileName(),
            .detail = u"Genre unified to "_s + variant.canon,
            .before = track.genre,
            .after = variant.canon};
}

QString unifySummary(const CrateHygiene::GenreVariant &variant, int count)
{
    return u"Unified "_s + counted(count, u"track"_s) + u" to "_s + variant.canon;
}

} // namespace tarnwick::CratePlan
