#include "screens/loudness/loudness_figures.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarnwick::LoudnessFigures {

namespace {

double distance(const Derived &derived, const ScannedTrack &track)
{
    return std::abs(derived.loudnessDeviation(track).value_or(0));
}

} // namespace

std::vector<ScannedTrack> tracks(const Derived &derived)
{
    std::vector<ScannedTrack> sorted = derived.tracksWithGain();
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const ScannedTrack &one, const ScannedTrack &other) {
                         return distance(derived, one) > distance(derived, other);
                     });
    return sorted;
}

bool isOutlier(const Derived &derived, const ScannedTrack &track)
{
    return distance(derived, track) >= outlierDeviation;
}

std::vector<ScannedTrack> outliers(const Derived &derived, const std::vector<ScannedTrack> &tracks)
{
    std::vector<ScannedTrack> found;
    std::copy_if(tracks.begin(), tracks.end(), std::back_inserter(found),
                 [&](const ScannedTrack &track) { return isOutlier(derived, track); });
    return found;
}

std::vector<GainItem> levelling(const Derived &derived, const std::vector<ScannedTrack> &outliers)
{
    std::vector<GainItem> items;
    for (const ScannedTrack &track : outliers) {
        if (const auto gain = derived.normalizingGain(track))
            items.push_back({track, *gain});
    }
    return items;
}

} // namespace tarnwick::LoudnessFigures
