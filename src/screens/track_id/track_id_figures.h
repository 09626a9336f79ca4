#pragma once

#include "analysis/derived.h"

#include <vector>

/// Genres that could be filled in.
namespace tarnwick::TrackIdFigures {

/// From this confidence on, in per cent, a suggestion is taken without being looked at.
inline constexpr int readyConfidence = 95;

/// A track without a genre, with what its artist suggests.
struct Suggestion
{
    ScannedTrack track;
    QString genre;
    int confidence = 0; ///< per cent

    bool operator==(const Suggestion &) const = default;
};

/// For those of the untagged tracks for which there is one, in library order.
std::vector<Suggestion> suggestions(const Derived &derived);

/// Those that are sure enough for a batch.
std::vector<Suggestion> ready(const std::vector<Suggestion> &suggestions);

/// Tracks that get one genre.
struct Batch
{
    QString genre;
    std::vector<ScannedTrack> tracks;
};

/// One for each genre, the one met first ahead.
std::vector<Batch> batches(const std::vector<Suggestion> &suggestions);

} // namespace tarnwick::TrackIdFigures
