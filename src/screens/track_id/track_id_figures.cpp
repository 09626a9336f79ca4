#include "screens/track_id/track_id_figures.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace tarnwick::TrackIdFigures {

namespace {

template <typename Predicate>
std::vector<Untagged> thoseWhere(const std::vector<Untagged> &untagged, Predicate wanted)
{
    std::vector<Untagged> found;
    std::copy_if(untagged.begin(), untagged.end(), std::back_inserter(found), wanted);
    return found;
}

} // namespace

std::vector<Untagged> untagged(const Derived &derived)
{
    const std::vector<ScannedTrack> &tracks = derived.result().tracks;
    std::vector<Untagged> found;
    for (size_t i = 0; i < tracks.size(); ++i) {
        if (tracks[i].isUntagged())
            found.push_back({i, derived.genreSuggestion(tracks[i])});
    }
    return found;
}

std::vector<Untagged> suggestions(const std::vector<Untagged> &untagged)
{
    return thoseWhere(untagged, [](const Untagged &one) { return one.suggestion.has_value(); });
}

std::vector<Untagged> ready(const std::vector<Untagged> &untagged)
{
    return thoseWhere(untagged, [](const Untagged &one) { return one.isReady(); });
}

std::vector<Batch> batches(const Derived &derived)
{
    std::vector<Batch> batches;
    QHash<QString, size_t> places;
    for (const Untagged &one : ready(untagged(derived))) {
        const QString &genre = one.suggestion->genre;
        const auto place = places.constFind(genre);
        const size_t batch = place == places.constEnd() ? batches.size() : *place;
        if (batch == batches.size()) {
            places.insert(genre, batch);
            batches.push_back({genre, {}});
        }
        batches[batch].tracks.push_back(derived.result().tracks[one.index]);
    }
    return batches;
}

} // namespace tarnwick::TrackIdFigures
