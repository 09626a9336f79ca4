#include "screens/loudness/loudness_figures.h"

#include "analysis/loudness.h"
#include "foundation/numbers.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarnwick::LoudnessFigures {

std::vector<Standing> tracksInLibraryOrder(const Derived &derived)
{
    const std::vector<ScannedTrack> &tracks = derived.result().tracks;
    std::vector<Standing> found;
    for (size_t i = 0; i < tracks.size(); ++i) {
        if (countsForLoudness(tracks[i]))
            found.push_back({i, derived.loudnessDeviation(tracks[i]).value_or(0)});
    }
    return found;
}

std::vector<Standing> tracks(const Derived &derived)
{
    std::vector<Standing> sorted = tracksInLibraryOrder(derived);
    std::stable_sort(sorted.begin(), sorted.end(), [](const Standing &one, const Standing &other) {
        return std::abs(one.deviation) > std::abs(other.deviation);
    });
    return sorted;
}

bool isOutlier(double deviation)
{
    return std::abs(deviation) >= outlierDeviation;
}

std::vector<Standing> outliers(const std::vector<Standing> &tracks)
{
    std::vector<Standing> found;
    std::copy_if(tracks.begin(), tracks.end(), std::back_inserter(found),
                 [](const Standing &one) { return isOutlier(one.deviation); });
    return found;
}

std::vector<GainItem> levelling(const Derived &derived, const std::vector<Standing> &outliers)
{
    std::vector<GainItem> items;
    for (const Standing &one : outliers) {
        const ScannedTrack &track = derived.result().tracks[one.index];
        if (const auto gain = derived.normalizingGain(track))
            items.push_back({track, *gain});
    }
    return items;
}

QString deviationText(double deviation)
{
    return QString::fromLatin1(signedOneDecimal(deviation) + " dB");
}

QString levelTitle(double gain)
{
    return QString::fromLatin1("Level " + signedOneDecimal(gain));
}

QString averageText(const Derived &derived)
{
    return QString::fromLatin1(oneDecimal(derived.avgAutogain()) + " dB");
}

} // namespace tarnwick::LoudnessFigures
