#include "tags/serato_geob.h"

#include "foundation/byte_reader.h"
#include "tags/id3_layout.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoGEOB {

namespace {

/// Frames of this version state their sizes as the header does, all others in plain numbers.
constexpr quint8 majorWithSyncsafeSizes = 4;
/// A file that has nothing but an empty tag is none.
constexpr qsizetype smallestFile = Id3::headerSize + 1;

quint64 frameSize(quint8 major, const char *bytes)
{
    if (major == majorWithSyncsafeSizes)
        return quint64(Id3::syncsafe(bytes));
    return qFromBigEndian<quint32>(bytes);
}

/// The frame at the reader's place; nothing if padding or the end comes first, or if it overruns.
std::optional<Frame> takeFrame(ByteReader &reader, quint8 major)
{
    if (reader.rest().startsWith('\0'))
        return std::nullopt;
    const auto header = reader.take(Id3::frameHeaderSize);
    if (!header)
        return std::nullopt;
    const auto payload = reader.take(frameSize(major, header->data() + Id3::frameSizeOffset));
    if (!payload)
        return std::nullopt;
    const char *flags = header->data() + Id3::frameFlagsOffset;
    return Frame{QString::fromLatin1(header->first(Id3::frameIdSize)),
                 {quint8(flags[0]), quint8(flags[1])},
                 payload->toByteArray()};
}

void appendSyncsafe(QByteArray &out, qint64 value)
{
    for (const int shift : {21, 14, 7, 0})
        out.append(char((value >> shift) & 0x7F));
}

/// At most four bytes, which cuts an id that has letters beyond ASCII.
QByteArray idBytes(const Frame &frame)
{
    return frame.id.toUtf8().left(Id3::frameIdSize);
}

qsizetype sizeOf(const Frame &frame)
{
    constexpr qsizetype sizeAndFlags = Id3::frameHeaderSize - Id3::frameIdSize;
    return idBytes(frame).size() + sizeAndFlags + frame.payload.size();
}

void appendFrame(QByteArray &out, quint8 major, const Frame &frame)
{
    out.append(idBytes(frame));
    if (major == majorWithSyncsafeSizes) {
        appendSyncsafe(out, frame.payload.size());
    } else {
        char size[4];
        qToBigEndian(quint32(frame.payload.size()), size);
        out.append(size, sizeof size);
    }
    for (const quint8 flag : frame.flags)
        out.append(char(flag));
    out.append(frame.payload);
}

} // namespace

std::optional<QString> Frame::geobDescriptor() const
{
    if (id != "GEOB"_L1)
        return std::nullopt;
    ByteReader reader(payload);
    if (!reader.take(1)) // the encoding
        return std::nullopt;
    if (!reader.takeThroughZero() || !reader.takeThroughZero()) // MIME type, file name
        return std::nullopt;
    const auto description = reader.takeThroughZero();
    if (!description)
        return std::nullopt;
    return QString::fromLatin1(*description);
}

const QStringList &cueDescriptors()
{
    static const QStringList descriptors{u"Serato Markers2"_s, u"Serato Markers_"_s,
                                         u"Serato BeatGrid"_s};
    return descriptors;
}

bool isCueFrame(const Frame &frame)
{
    const auto descriptor = frame.geobDescriptor();
    return descriptor && cueDescriptors().contains(*descriptor);
}

std::optional<Tag> readTag(QByteArray bytes)
{
    if (bytes.size() < smallestFile || !Id3::hasMagic(bytes) || !Id3::areFlagsReadable(bytes))
        return std::nullopt;
    const qint64 size = Id3::syncsafe(bytes.constData() + Id3::sizeOffset);
    const qint64 end = Id3::headerSize + size;
    if (end > bytes.size())
        return std::nullopt;
    Tag tag;
    tag.major = quint8(bytes.at(Id3::majorOffset));
    ByteReader reader(QByteArrayView(bytes).sliced(Id3::headerSize, size));
    while (auto frame = takeFrame(reader, tag.major))
        tag.frames.push_back(std::move(*frame));
    tag.audio = std::move(bytes);
    tag.audio.remove(0, end);
    return tag;
}

QByteArray serializeTagAlone(const Tag &tag)
{
    qsizetype size = 0;
    for (const Frame &frame : tag.frames)
        size += sizeOf(frame);
    QByteArray out;
    out.reserve(Id3::headerSize + size);
    out.append(Id3::magic);
    out.append(char(tag.major));
    out.append(Id3::sizeOffset - out.size(), '\0');
    appendSyncsafe(out, size);
    for (const Frame &frame : tag.frames)
        appendFrame(out, tag.major, frame);
    return out;
}

QByteArray serialize(const Tag &tag)
{
    return serializeTagAlone(tag) + tag.audio;
}

} // namespace tarnwick::SeratoGEOB
