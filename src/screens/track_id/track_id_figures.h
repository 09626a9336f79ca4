#pragma once

#include "analysis/derived.h"

#include <vector>

/// Genres that could be filled in.
namespace tarnwick::TrackIdFigures {

/// So many rows are shown; the others are only counted.
inline constexpr size_t mostRows = 60;

/// A track on disk without a genre, with what its artist suggests.
struct Untagged
{
    size_t index = 0; ///< of the track in the result
    std::optional<GenreSuggestion> suggestion;

    /// Whether the suggestion is sure enough for a batch.
    bool isReady() const { return suggestion && suggestion->isSure(); }

    bool operator==(const Untagged &) const = default;
};

/// In library order.
std::vector<Untagged> untagged(const Derived &derived);

/// Those for which there is a suggestion.
std::vector<Untagged> suggestions(const std::vector<Untagged> &untagged);

/// Those that are ready.
std::vector<Untagged> ready(const std::vector<Untagged> &untagged);

/// Tracks that get one genre.
struct Batch
{
    QString genre;
    std::vector<ScannedTrack> tracks;
};

/// One for each genre of those that are ready, the one met first ahead.
std::vector<Batch> batches(const Derived &derived);

} // namespace tarnwick::TrackIdFigures
