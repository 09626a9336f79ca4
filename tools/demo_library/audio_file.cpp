#include "audio_file.h"

#include "cover_art.h"
#include "id3_writer.h"
#include "mpeg_silence.h"
#include "pcm_silence.h"
#include "serato_frames.h"

#include <algorithm>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr int pcmSamplesOfAFrame = 288;

void addTexts(Id3Writer &writer, const TrackPlan &track)
{
    writer.addText("TIT2", track.title);
    writer.addText("TPE1", track.artist);
    writer.addText("TALB", track.album);
    writer.addText("TCON", track.genre);
    writer.addText("TCOM", track.composer);
    writer.addText("TIT1", track.grouping);
    writer.addText("TPUB", track.label);
    writer.addText(track.tag.form == TagForm::V24 ? "TDRC" : "TYER", track.year);
    writer.addText("TBPM", track.bpm.section(u'.', 0, 0));
    writer.addText("TKEY", track.key);
    writer.addText("TSSE", u"Silence"_s);
    writer.addComment(track.comment);
}

QByteArray replayGainName(ReplayGain spelling)
{
    QByteArray name("REPLAYGAIN_TRACK_GAIN");
    switch (spelling) {
    case ReplayGain::LowerCase:
        return name.toLower();
    case ReplayGain::MixedCase:
        return "ReplayGain_Track_Gain";
    default:
        return name;
    }
}

void addReplayGain(Id3Writer &writer, const TagPlan &tag)
{
    if (tag.replayGain != ReplayGain::None) {
        QByteArray gain = decimalText(tag.autogain);
        gain.chop(1);
        writer.addUserText(replayGainName(tag.replayGain), gain + " dB");
    }
}

void addSeratoObjects(Id3Writer &writer, const TrackPlan &track, Random &random)
{
    const TagPlan &tag = track.tag;
    if (tag.autotags) {
        writer.addObject("Serato Analysis", "\x02\x01");
        writer.addObject("Serato Autotags", autotagsData(track.bpm, tag.autogain));
    }
    if (tag.olderMarkers) {
        writer.addObject("Serato Markers_", olderMarkersData(random));
    }
    if (tag.markers2) {
        writer.addObject("Serato Markers2", markers2Data(random));
    }
    if (tag.beatGrid) {
        writer.addObject("Serato BeatGrid", beatGridData(track.bpm, random));
    }
    if (tag.overview) {
        writer.addObject("Serato Overview", overviewData(random));
    }
}

QByteArray id3Tag(const TrackPlan &track, Random &random)
{
    if (track.tag.form == TagForm::None) {
        return {};
    }
    Id3Writer writer(track.tag.form);
    addTexts(writer, track);
    addReplayGain(writer, track.tag);
    if (track.tag.artworkWidth > 0) {
        writer.addPicture(coverArt(track.tag.artworkWidth, static_cast<quint32>(random.next())));
    }
    addSeratoObjects(writer, track, random);
    return writer.tag(std::max<qsizetype>(track.tag.padding, track.tag.paddedSize - writer.size()));
}

} // namespace

QByteArray audioFile(const TrackPlan &track, Random random)
{
    const QByteArray tag = id3Tag(track, random);
    const int samples = track.mpegFrames * pcmSamplesOfAFrame;
    switch (track.audio) {
    case AudioKind::Wav:
        return wavSilence(samples, track.sampleRate, tag);
    case AudioKind::Aiff:
        return aiffSilence(samples, track.sampleRate, tag);
    case AudioKind::Mp3:
        break;
    }
    return tag + mpegSilence(track.mpegFrames, track.kbps, track.sampleRate);
}

} // namespace tarnwick::demo
