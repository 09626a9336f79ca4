#include "analysis/derived.h"

#include <algorithm>

namespace tarnwick {

namespace {

template <typename Predicate>
std::vector<ScannedTrack> tracksWhere(const ScanResult &result, Predicate wanted)
{
    std::vector<ScannedTrack> tracks;
    std::copy_if(result.tracks.begin(), result.tracks.end(), std::back_inserter(tracks), wanted);
    return tracks;
}

} // namespace

Derived::Derived(std::shared_ptr<const ScanResult> result, const QSet<QString> &ignoredDupeKeys)
    : LibraryCounts(countsOf(result->tracks))
    , duplicateGroups(duplicateGroupsOf(result->tracks, ignoredDupeKeys))
    , m_result(std::move(result))
{
    for (const DuplicateGroup &group : duplicateGroups) {
        duplicateExcess += int(group.members.size()) - 1;
        reclaimableBytes += group.reclaimableBytes;
    }
    dimensions = dimensionsOf(*this);
    score = overallScore(dimensions);
}

std::vector<ScannedTrack> Derived::missingTracks() const
{
    return tracksWhere(*m_result, [](const ScannedTrack &scanned) { return scanned.isMissing(); });
}

std::vector<ScannedTrack> Derived::untaggedTracks() const
{
    return tracksWhere(*m_result, [](const ScannedTrack &scanned) {
        return scanned.existsOnDisk && !scanned.track.hasGenre();
    });
}

const Dimension &Derived::worst() const
{
    return *std::min_element(
        dimensions.begin(), dimensions.end(),
        [](const Dimension &a, const Dimension &b) { return a.score < b.score; });
}

} // namespace tarnwick
