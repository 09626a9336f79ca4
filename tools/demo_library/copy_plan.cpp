#include "copy_plan.h"

#include <algorithm>
#include <numeric>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr int copiesPermille = 60;
constexpr int fewestTracksWithCopies = 8;

/// The same artist and title as people and shops spell them.
void respell(TrackPlan &copy, Random &random)
{
    switch (random.below(8)) {
    case 0:
        copy.title = copy.title.toUpper();
        break;
    case 1:
        copy.title = copy.title.toLower();
        copy.artist = copy.artist.toLower();
        break;
    case 2:
        copy.title += u' ';
        break;
    case 3:
        copy.artist = u' ' + copy.artist;
        break;
    case 4:
        copy.title = copy.artist + u" - "_s + copy.title;
        copy.artist.clear();
        break;
    default:
        break;
    }
}

TrackPlan copyOf(const TrackPlan &track, Random &random)
{
    static constexpr int rates[] = {320, 320, 256, 192, 160, 128};
    TrackPlan copy = track;
    copy.kbps = random.permille(300) ? track.kbps : random.pick(rates);
    if (random.permille(80)) {
        copy.audio = AudioKind::Wav;
        copy.kbps = 1411;
        copy.sampleRate = 44100;
    }
    copy.dateAdded += random.between(1, 300) * qint64(86'400);
    copy.playCount = random.permille(300) ? random.below(10) : 0;
    copy.comment.clear();
    respell(copy, random);
    return copy;
}

} // namespace

int numberOfCopies(int tracks)
{
    return tracks < fewestTracksWithCopies ? 0 : std::max(1, tracks * copiesPermille / 1000);
}

void addCopies(QList<TrackPlan> &tracks, int copies, Random random)
{
    QList<qsizetype> originals(tracks.size());
    std::iota(originals.begin(), originals.end(), 0);
    random.shuffle(originals);
    for (const qsizetype original : std::as_const(originals)) {
        const int draw = random.below(100);
        const int wanted = std::min(copies, draw < 75 ? 1 : draw < 93 ? 2 : 3);
        for (int i = 0; i < wanted; ++i) {
            tracks[original].hasCopies = true;
            tracks.append(copyOf(tracks[original], random));
        }
        copies -= wanted;
        if (copies == 0) {
            return;
        }
    }
}

} // namespace tarnwick::demo
