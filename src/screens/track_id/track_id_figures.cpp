#include "screens/track_id/track_id_figures.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace tarnwick::TrackIdFigures {

std::vector<Suggestion> suggestions(const Derived &derived)
{
    std::vector<Suggestion> found;
    for (const ScannedTrack &track : derived.untaggedTracks()) {
        if (const auto suggestion = derived.genreSuggestion(track))
            found.push_back({track, suggestion->genre, suggestion->confidence});
    }
    return found;
}

std::vector<Suggestion> ready(const std::vector<Suggestion> &suggestions)
{
    std::vector<Suggestion> sure;
    std::copy_if(
        suggestions.begin(), suggestions.end(), std::back_inserter(sure),
        [](const Suggestion &suggestion) { return suggestion.confidence >= readyConfidence; });
    return sure;
}

std::vector<Batch> batches(const std::vector<Suggestion> &suggestions)
{
    std::vector<Batch> batches;
    QHash<QString, size_t> places;
    for (const Suggestion &suggestion : suggestions) {
        const auto place = places.constFind(suggestion.genre);
        if (place != places.constEnd()) {
            batches[*place].tracks.push_back(suggestion.track);
        } else {
            places.insert(suggestion.genre, batches.size());
            batches.push_back({suggestion.genre, {suggestion.track}});
        }
    }
    return batches;
}

} // namespace tarnwick::TrackIdFigures
