// Cue frames and gains written into audio files of any content: the audio and all other frames
// stay, and what was written is read again.

#include "fuzz_input.h"
#include "scratch.h"
#include "tags/geob_files.h"
#include "tags/serato_geob.h"

#include <optional>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

using SeratoGEOB::CueFrames;
using SeratoGEOB::Frame;

std::vector<Frame> withoutCues(std::vector<Frame> frames)
{
    std::erase_if(frames, SeratoGEOB::isCueFrame);
    return frames;
}

/// A whole object of each description that the input asks for.
CueFrames framesFrom(Pieces &pieces)
{
    CueFrames frames;
    const int which = pieces.byte();
    for (int i = 0; i < 3; ++i) {
        const QString descriptor = SeratoGEOB::cueDescriptors().at(i);
        if (which >> i & 1)
            frames[descriptor] = QByteArray("\0application/octet-stream\0\0", 27) +
                                 descriptor.toLatin1() + '\0' + pieces.bytes();
    }
    return frames;
}

/// Frames come back as they are if their ids can be written and none looks like padding.
bool comeBack(const std::vector<Frame> &frames)
{
    return std::all_of(frames.begin(), frames.end(), [](const Frame &frame) {
        return !frame.id.startsWith(QChar::Null) &&
               std::all_of(frame.id.begin(), frame.id.end(),
                           [](QChar each) { return each.unicode() < 0x80; });
    });
}

std::optional<SeratoGEOB::Tag> tagOf(const Scratch &scratch)
{
    return SeratoGEOB::readTag(scratch.contentOf(u"a.mp3"_s));
}

void checkKept(const Scratch &scratch, const SeratoGEOB::Tag &before)
{
    const auto after = tagOf(scratch);
    // A file that has nothing but an empty tag is none.
    if (!after) {
        require(before.audio.isEmpty() && withoutCues(before.frames).empty(), "a tag stays a tag");
        return;
    }
    require(after->audio == before.audio, "the audio stays");
    if (comeBack(before.frames))
        require(withoutCues(after->frames) == withoutCues(before.frames), "other frames stay");
}

/// A gain takes the place of the first that is there, or stands behind all frames.
void checkGain(const QString &path, const Scratch &scratch, const SeratoGEOB::Tag &before)
{
    const QByteArray payload("\0REPLAYGAIN_TRACK_GAIN\0-2.50 dB", 31);
    const auto isGain = [](const Frame &frame) {
        return frame.id == u"TXXX" && frame.payload.size() > 1 &&
               frame.payload.sliced(1).split('\0').first() == "REPLAYGAIN_TRACK_GAIN";
    };
    require(SeratoGEOB::writeReplayGain(-2.5, path).has_value(), "a gain can be written");
    if (!comeBack(before.frames))
        return;
    std::vector<Frame> wanted = before.frames;
    const auto gain = std::find_if(wanted.begin(), wanted.end(), isGain);
    if (gain == wanted.end())
        wanted.push_back({u"TXXX"_s, {}, payload});
    else
        gain->payload = payload;
    const auto after = tagOf(scratch);
    require(after && after->frames == wanted && after->audio == before.audio, "and nothing else");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    Pieces input(viewOf(data, size));
    const CueFrames frames = framesFrom(input);
    const QString path = scratch.put(u"a.mp3"_s, input.rest());
    const auto before = tagOf(scratch);

    const bool isRestored = SeratoGEOB::restoreCueFrames(frames, path).has_value();
    require(isRestored == before.has_value(), "a file with a tag that can be edited is edited");
    if (!before) {
        require(SeratoGEOB::stripCueFrames(path).has_value(), "nothing to strip is no failure");
        require(!SeratoGEOB::writeReplayGain(-2.5, path), "nor gets a gain");
        require(scratch.contentOf(u"a.mp3"_s) == input.rest(), "any other file stays as it is");
        return 0;
    }
    noteRead();
    checkKept(scratch, *before);
    if (comeBack(before->frames)) {
        const CueFrames captured = SeratoGEOB::captureCueFrames(path);
        for (auto frame = frames.cbegin(); frame != frames.cend(); ++frame) {
            // Of two frames of one description the first is set, and the later counts.
            const auto isSame = [&](const Frame &each) {
                return each.geobDescriptor() == frame.key();
            };
            const auto same = std::count_if(before->frames.begin(), before->frames.end(), isSame);
            require(captured.contains(frame.key()), "what was put back is there");
            require(same > 1 || captured[frame.key()] == frame.value(), "as it was");
        }
    }
    require(SeratoGEOB::stripCueFrames(path).has_value(), "cues can be taken out");
    checkKept(scratch, *before);
    if (comeBack(before->frames))
        require(SeratoGEOB::captureCueFrames(path).isEmpty(), "then there are none");
    scratch.put(u"a.mp3"_s, input.rest());
    checkGain(path, scratch, *before);
    return 0;
}
