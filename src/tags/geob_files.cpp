#include "tags/geob_files.h"

#include "foundation/numbers.h"
#include "platform/file_handle.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "tags/id3_layout.h"
#include "tags/serato_geob.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoGEOB {

namespace {

constexpr auto gainDescription = "REPLAYGAIN_TRACK_GAIN"_L1;

Failure noEditableTag()
{
    return {u"This file has no editable ID3 tag."_s};
}

/// Header and tag without the audio. Nothing if the file is none that frames are captured from.
std::optional<QByteArray> readTagAlone(platform::FileHandle &file)
{
    QByteArray bytes(Id3::headerSize, Qt::Uninitialized);
    const auto header = file.read(bytes.data(), bytes.size());
    if (!header || *header < bytes.size() || !Id3::hasMagic(bytes) || !Id3::areFlagsReadable(bytes))
        return std::nullopt;
    const qint64 size = Id3::syncsafe(bytes.constData() + Id3::sizeOffset);
    if (size < 1 || size > Id3::largestReadTag || quint64(Id3::headerSize + size) > file.size())
        return std::nullopt;
    bytes.resize(Id3::headerSize + size);
    const auto body = file.read(bytes.data() + Id3::headerSize, size);
    if (!body || *body < size)
        return std::nullopt;
    return bytes;
}

Result<Tag> readEditableTag(const QString &path)
{
    auto bytes = platform::readFile(path);
    if (!bytes)
        return tl::unexpected(bytes.error());
    auto tag = readTag(std::move(*bytes));
    if (!tag)
        return tl::unexpected(noEditableTag());
    return std::move(*tag);
}

Done writeTag(const Tag &tag, const QString &path)
{
    const QByteArray head = serializeTagAlone(tag);
    return platform::replaceFile(path, std::array<QByteArrayView, 2>{head, tag.audio});
}

/// Puts a payload into the first frame that `matches`, or into a new one behind all others.
template <typename Matches>
void setPayload(Tag &tag, const QString &id, const QByteArray &payload, Matches matches)
{
    const auto frame = std::find_if(tag.frames.begin(), tag.frames.end(), matches);
    if (frame == tag.frames.end())
        tag.frames.push_back({id, {}, payload});
    else
        frame->payload = payload;
}

void setObject(Tag &tag, const QString &descriptor, const QByteArray &payload)
{
    setPayload(tag, u"GEOB"_s, payload,
               [&](const Frame &frame) { return frame.geobDescriptor() == descriptor; });
}

bool isTrackGain(const Frame &frame)
{
    if (frame.id != "TXXX"_L1 || frame.payload.size() < 2)
        return false;
    const QByteArrayView texts = QByteArrayView(frame.payload).sliced(1); // behind the encoding
    const qsizetype zero = texts.indexOf('\0');
    return QLatin1StringView(zero < 0 ? texts : texts.first(zero)) == gainDescription;
}

QByteArray gainPayload(double gain)
{
    QByteArray payload(1, '\0'); // Latin-1
    payload.append(gainDescription.data(), gainDescription.size());
    payload.append('\0');
    payload.append(twoDecimals(gain));
    payload.append(" dB");
    return payload;
}

} // namespace

CueFrames captureCueFrames(const QString &path)
{
    CueFrames captured;
    auto file = platform::FileHandle::openForReading(path);
    if (!file)
        return captured;
    auto bytes = readTagAlone(*file);
    const auto tag = bytes ? readTag(std::move(*bytes)) : std::nullopt;
    if (!tag)
        return captured;
    for (const Frame &frame : tag->frames) {
        if (isCueFrame(frame))
            captured.insert(*frame.geobDescriptor(), frame.payload);
    }
    return captured;
}

Done restoreCueFrames(const CueFrames &frames, const QString &path)
{
    auto tag = readEditableTag(path);
    if (!tag)
        return tl::unexpected(tag.error());
    CueFrames others = frames;
    for (const QString &descriptor : cueDescriptors()) {
        if (const auto frame = frames.constFind(descriptor); frame != frames.cend())
            setObject(*tag, descriptor, *frame);
        others.remove(descriptor);
    }
    for (auto frame = others.cbegin(); frame != others.cend(); ++frame)
        setObject(*tag, frame.key(), frame.value());
    return writeTag(*tag, path);
}

Done writeReplayGain(double gain, const QString &path)
{
    auto tag = readEditableTag(path);
    if (!tag)
        return tl::unexpected(tag.error());
    setPayload(*tag, u"TXXX"_s, gainPayload(gain), isTrackGain);
    return writeTag(*tag, path);
}

Done stripCueFrames(const QString &path)
{
    auto bytes = platform::readFile(path);
    if (!bytes)
        return tl::unexpected(bytes.error());
    auto tag = readTag(std::move(*bytes));
    if (!tag)
        return {};
    std::erase_if(tag->frames, isCueFrame);
    return writeTag(*tag, path);
}

} // namespace tarnwick::SeratoGEOB
