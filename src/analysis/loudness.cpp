#include "analysis/loudness.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {

bool countsForLoudness(const ScannedTrack &scanned)
{
    return scanned.existsOnDisk && scanned.autogain;
}

std::vector<ScannedTrack> tracksWithGain(const std::vector<ScannedTrack> &tracks)
{
    std::vector<ScannedTrack> found;
    std::copy_if(tracks.begin(), tracks.end(), std::back_inserter(found), countsForLoudness);
    return found;
}

double averageAutogain(const std::vector<ScannedTrack> &tracks)
{
    double sum = 0.0;
    int count = 0;
    for (const ScannedTrack &scanned : tracks) {
        if (!countsForLoudness(scanned))
            continue;
        sum += *scanned.autogain;
        ++count;
    }
    return count == 0 ? 0.0 : sum / count;
}

} // namespace tarnwick
