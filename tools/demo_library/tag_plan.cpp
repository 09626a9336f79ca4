#include "tag_plan.h"

namespace tarnwick::demo {

namespace {

constexpr int usualAutogain = -4200; // thousandths of a decibel
constexpr int autogainSpread = 1500;

ReplayGain drawReplayGain(Random &random)
{
    const int draw = random.below(1000);
    return draw < 90    ? ReplayGain::UpperCase
           : draw < 130 ? ReplayGain::LowerCase
           : draw < 140 ? ReplayGain::MixedCase
                        : ReplayGain::None;
}

/// The frames that Serato leaves in a file that it has analysed; cues are the DJ's own work.
void planSeratoFrames(TagPlan &tag, Random &random)
{
    if (!random.permille(820)) {
        return;
    }
    tag.autotags = random.permille(930);
    tag.beatGrid = random.permille(850);
    tag.markers2 = random.permille(700);
    tag.olderMarkers = tag.markers2 ? random.permille(700) : random.permille(60);
    const int coarse = random.between(-autogainSpread, autogainSpread);
    tag.autogain = usualAutogain + coarse + random.between(-autogainSpread, autogainSpread) / 2;
}

void planLargeParts(TagPlan &tag, Random &random)
{
    constexpr int narrowest = 83; // about 20 KB
    constexpr int widest = 365;   // about 400 KB
    tag.overview = tag.autotags && random.permille(400);
    tag.artworkWidth = random.permille(60) ? random.between(narrowest, widest) : 0;
    tag.padding = random.permille(600) ? random.between(1, 2048) : 0;
}

} // namespace

void planTags(QList<TrackPlan> &tracks, TagSizes sizes, Random random)
{
    for (TrackPlan &track : tracks) {
        TagPlan &tag = track.tag;
        tag.form = random.permille(700) ? TagForm::V23 : TagForm::V24;
        planSeratoFrames(tag, random);
        tag.replayGain = drawReplayGain(random);
        track.grownBy = random.permille(60) ? static_cast<quint32>(random.between(10, 900)) : 0;
        if (sizes == TagSizes::Small) {
            tag.paddedSize = random.permille(800) ? smallTagSize : 0;
            track.mpegFrames = random.between(2, 4);
        } else {
            planLargeParts(tag, random);
            track.mpegFrames = random.between(4, 14);
        }
    }
}

} // namespace tarnwick::demo
