// The tag of an audio file, read and written again.

#include "fuzz_input.h"
#include "tags/id3_layout.h"
#include "tags/serato_geob.h"

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

using SeratoGEOB::Frame;

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar each) { return each.unicode() < 0x80; });
}

/// Whether a frame can be written as it was read: ids are written in UTF-8 of four bytes, and an
/// end of the frames is told by a zero.
bool comesBack(const Frame &frame)
{
    return isAscii(frame.id) && !frame.id.startsWith(QChar::Null);
}

/// Whether the header and the sizes of all frames are such as are written: nothing but what was
/// read, with no padding and no bits that don't count.
bool isWrittenForm(QByteArrayView input, const SeratoGEOB::Tag &tag)
{
    qsizetype at = Id3::headerSize;
    for (const Frame &frame : tag.frames) {
        const QByteArrayView size = input.sliced(at + Id3::frameSizeOffset, 4);
        const bool isPlain =
            std::all_of(size.begin(), size.end(), [](char byte) { return uchar(byte) < 0x80; });
        if (tag.major == 4 && !isPlain)
            return false;
        at += Id3::frameHeaderSize + frame.payload.size();
    }
    const QByteArrayView size = input.sliced(Id3::sizeOffset, 4);
    return input[4] == 0 && input[Id3::flagsOffset] == 0 && at == input.size() - tag.audio.size() &&
           std::all_of(size.begin(), size.end(), [](char byte) { return uchar(byte) < 0x80; });
}

/// Behind the last frame comes padding, or less than one more frame takes.
void checkEnd(QByteArrayView input, const SeratoGEOB::Tag &tag)
{
    QByteArrayView rest = input.chopped(tag.audio.size()).sliced(Id3::headerSize);
    for (const Frame &frame : tag.frames)
        rest = rest.sliced(Id3::frameHeaderSize + frame.payload.size());
    if (rest.size() < Id3::frameHeaderSize || rest.front() == '\0')
        return;
    const auto *const sizes = reinterpret_cast<const uchar *>(rest.data()) + Id3::frameSizeOffset;
    const int bits = tag.major == 4 ? 7 : 8;
    quint64 size = 0;
    for (int i = 0; i < 4; ++i)
        size = size << bits | sizes[i];
    require(size > quint64(rest.size() - Id3::frameHeaderSize), "no frame is left out");
}

void checkFrame(const Frame &frame)
{
    require(frame.id.size() == Id3::frameIdSize, "an id has four characters");
    const auto description = frame.geobDescriptor();
    require(!description || frame.id == QLatin1StringView("GEOB"), "only objects are described");
    require(!description || frame.payload.contains(description->toLatin1()), "in its payload");
    require(SeratoGEOB::isCueFrame(frame) ==
                (description && SeratoGEOB::cueDescriptors().contains(*description)),
            "what is a cue frame");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = viewOf(data, size);
    const auto tag = SeratoGEOB::readTag(input.toByteArray());
    if (!tag)
        return 0;
    noteRead();
    require(input.endsWith(tag->audio), "the audio is the end of the file");
    require(tag->audio.size() <= input.size() - Id3::headerSize, "behind the header");
    for (const Frame &frame : tag->frames)
        checkFrame(frame);
    checkEnd(input, *tag);

    const QByteArray written = SeratoGEOB::serialize(*tag);
    require(written == SeratoGEOB::serializeTagAlone(*tag) + tag->audio, "the tag, then the audio");
    if (!std::all_of(tag->frames.begin(), tag->frames.end(), comesBack))
        return 0;
    if (isWrittenForm(input, *tag))
        require(written == input, "a plain tag comes back byte for byte");
    if (const auto again = SeratoGEOB::readTag(written))
        require(*again == *tag, "every frame comes back");
    else
        require(written.size() == Id3::headerSize, "only an empty file is none");
    return 0;
}
