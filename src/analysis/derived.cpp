#include "analysis/derived.h"

#include "analysis/loudness.h"

#include <algorithm>
#include <iterator>
#include <mutex>

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

struct Derived::LazyGenreIndex
{
    std::once_flag counted;
    std::optional<GenreIndex> index;
};

Derived::Derived(std::shared_ptr<const ScanResult> result, const QSet<QString> &ignoredDupeKeys)
    : LibraryCounts(countsOf(result->tracks))
    , duplicateGroups(duplicateGroupsOf(result->tracks, ignoredDupeKeys))
    , m_result(std::move(result))
    , m_genreIndex(std::make_shared<LazyGenreIndex>())
    , m_avgAutogain(averageAutogain(m_result->tracks))
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
    return tracksWhere(*m_result, [](const ScannedTrack &scanned) { return scanned.isUntagged(); });
}

const Dimension &Derived::worst() const
{
    return *std::min_element(
        dimensions.begin(), dimensions.end(),
        [](const Dimension &a, const Dimension &b) { return a.score < b.score; });
}

std::vector<VersionGroup> Derived::versionGroups() const
{
    return versionGroupsOf(m_result->tracks);
}

std::optional<GenreSuggestion> Derived::genreSuggestion(const ScannedTrack &scanned) const
{
    std::call_once(m_genreIndex->counted,
                   [this] { m_genreIndex->index.emplace(m_result->tracks); });
    return m_genreIndex->index->suggestionFor(scanned);
}

std::vector<ScannedTrack> Derived::tracksWithGain() const
{
    return tarnwick::tracksWithGain(m_result->tracks);
}

std::optional<double> Derived::loudnessDeviation(const ScannedTrack &scanned) const
{
    return scanned.autogain ? std::optional(m_avgAutogain - *scanned.autogain) : std::nullopt;
}

std::optional<double> Derived::normalizingGain(const ScannedTrack &scanned) const
{
    return scanned.autogain ? std::optional(*scanned.autogain - m_avgAutogain) : std::nullopt;
}

} // namespace tarnwick
