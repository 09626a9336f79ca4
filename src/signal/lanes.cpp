#include "signal/lanes.h"

#include "foundation/numbers.h"
#include "serato/serato_history.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct TempoBand
{
    double end; ///< beats a minute; belongs to the next band
    QStringView name;
};

constexpr TempoBand bands[] = {
    {100, u"< 100 BPM"},
    {120, u"100–120 BPM"},
    {130, u"120–130 BPM"},
};

} // namespace

QString laneOf(const SeratoTrack &track)
{
    if (track.hasGenre())
        return track.genre;
    const double tempo = parseTempo(track.bpm).value_or(0);
    if (tempo <= 0)
        return u"Unknown"_s;
    for (const TempoBand &band : bands) {
        if (tempo < band.end)
            return band.name.toString();
    }
    return u"130+ BPM"_s;
}

QStringList lanesOf(std::span<const ScannedTrack> tracks)
{
    QSet<QString> distinct;
    for (const ScannedTrack &scanned : tracks) {
        if (scanned.existsOnDisk)
            distinct.insert(laneOf(scanned.track));
    }
    QStringList lanes(distinct.begin(), distinct.end());
    lanes.sort();
    lanes.prepend(u"All"_s);
    return lanes;
}

QHash<QString, QString> laneMapOf(std::span<const ScannedTrack> tracks)
{
    QHash<QString, QString> lanes;
    lanes.reserve(qsizetype(tracks.size()));
    for (const ScannedTrack &scanned : tracks)
        lanes.insert(scanned.track.absolutePath(), laneOf(scanned.track));
    return lanes;
}

QSet<QString> ownedKeysOf(std::span<const ScannedTrack> tracks)
{
    QSet<QString> keys;
    keys.reserve(qsizetype(tracks.size()));
    for (const ScannedTrack &scanned : tracks) {
        if (scanned.existsOnDisk)
            keys.insert(SeratoHistory::trackKey(scanned.track.displayArtist(),
                                                scanned.track.displayTitle()));
    }
    return keys;
}

OwnedMusic ownedMusicOf(std::span<const ScannedTrack> tracks)
{
    return {.lanes = lanesOf(tracks), .keys = ownedKeysOf(tracks)};
}

} // namespace tarnwick
