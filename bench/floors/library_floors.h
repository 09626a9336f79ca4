#pragma once

#include "analysis/scan_result.h"
#include "serato/loaded_crate.h"

#include <QList>

/// What the figures of a library can't do without: each key folded once, for ASCII only, and
/// looked up in one flat table; no text is made, no track is copied.
namespace tarnwick::bench {

/// How many tracks share artist and title with an earlier one.
int flatGrouping(const std::vector<ScannedTrack> &tracks);

/// How many tracks share artist and song with an earlier one, the title being cut at its first
/// bracket or dash and searched for the words that name a cut.
int versionGrouping(const std::vector<ScannedTrack> &tracks);

/// The most frequent genre of the artist of each track, by its number; the sum of the numbers.
qint64 genreSuggestions(const std::vector<ScannedTrack> &tracks);

/// How many pairs of crates share a path.
int pairsThatShare(const QList<LoadedCrate> &crates);

} // namespace tarnwick::bench
