#include "tags/serato_tags.h"

#include "foundation/byte_reader.h"
#include "foundation/numbers.h"
#include "foundation/paths.h"
#include "foundation/text.h"
#include "platform/file_handle.h"
#include "tags/id3_layout.h"
#include "tags/pattern_scan.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoTags {

namespace {

using platform::FileHandle;

/// The first read takes a header and a small tag together: one page, since each more costs as much
/// again as all else. A larger tag takes a second read.
constexpr qsizetype firstReadSize = 4096;
constexpr qsizetype bufferSize = Id3::headerSize + Id3::largestReadTag;
static_assert(firstReadSize <= bufferSize);

/// Places of the patterns below.
enum Pattern : size_t { Markers, BeatGrid, UpperGain, LowerGain, Analysis };
constexpr QByteArrayView analysisPattern = "Serato Autotags";
constexpr PatternScan scan({QByteArrayView("Serato Markers2"), QByteArrayView("Serato BeatGrid"),
                            QByteArrayView("REPLAYGAIN"), QByteArrayView("replaygain"),
                            analysisPattern});

/// One buffer a thread, made at the first probe. Pages that no tag has reached cost no memory.
char *threadBuffer()
{
    thread_local const auto buffer = std::make_unique_for_overwrite<char[]>(size_t(bufferSize));
    return buffer.get();
}

/// The tag behind the header, cut short where the file is; nothing if there is no usable tag. Lies
/// in the thread's buffer until the next call.
std::optional<QByteArrayView> readTagBody(FileHandle &file)
{
    char *buffer = threadBuffer();
    const auto first = file.readAtLeast(buffer, Id3::headerSize, firstReadSize);
    if (!first || *first < Id3::headerSize || !Id3::hasMagic(QByteArrayView(buffer, *first)))
        return std::nullopt;
    const qint64 size = Id3::syncsafe(buffer + Id3::sizeOffset);
    if (size < 1 || size > Id3::largestReadTag)
        return std::nullopt;
    qsizetype filled = std::min<qsizetype>(*first, Id3::headerSize + size);
    if (filled < Id3::headerSize + size) {
        const auto rest = file.read(buffer + filled, Id3::headerSize + size - filled);
        if (!rest)
            return std::nullopt;
        filled += *rest;
    }
    if (filled == Id3::headerSize)
        return std::nullopt;
    return QByteArrayView(buffer + Id3::headerSize, filled - Id3::headerSize);
}

/// The next text up to a zero byte or the end, and a move past the zero; nothing, and no move, if
/// there is no byte ahead of either.
std::optional<QByteArrayView> takeField(ByteReader &reader)
{
    const QByteArrayView rest = reader.rest();
    const qsizetype zero = rest.indexOf('\0');
    const qsizetype length = zero < 0 ? rest.size() : zero;
    if (length == 0)
        return std::nullopt;
    reader.take(quint64(std::min(length + 1, rest.size())));
    return rest.first(length);
}

/// The gain in the data of Serato's analysis tag, whose description ends just ahead of `rest`.
std::optional<double> autogain(QByteArrayView rest)
{
    constexpr quint64 versionSize = 2;
    ByteReader reader(rest);
    const auto terminator = reader.take(1);
    if (!terminator || terminator->front() != '\0' || !reader.take(versionSize))
        return std::nullopt;
    takeField(reader); // the tempo
    const auto gain = takeField(reader);
    if (!gain)
        return std::nullopt;
    const auto value = parseDouble(*gain);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<Presence> presenceIn(FileHandle &file)
{
    const auto body = readTagBody(file);
    if (!body)
        return std::nullopt;
    const auto found = scan.firstOffsets(*body);
    const auto has = [&found](Pattern pattern) { return found[pattern] != PatternScan::notFound; };
    Presence result;
    result.hasMarkers = has(Markers);
    result.hasBeatGrid = has(BeatGrid);
    result.hasReplayGain = has(UpperGain) || has(LowerGain);
    result.hasGain = result.hasReplayGain || has(Analysis);
    if (has(Analysis))
        result.autogain = autogain(body->sliced(found[Analysis] + analysisPattern.size()));
    return result;
}

} // namespace

bool isSupported(const QString &path)
{
    static const QStringList probed{u"mp3"_s, u"aif"_s, u"aiff"_s, u"wav"_s};
    return probed.contains(lowerCased(pathExtension(path)));
}

std::optional<Presence> presence(const QString &path)
{
    auto file = FileHandle::openForReading(path);
    return file ? presenceIn(*file) : std::nullopt;
}

std::optional<Presence> presenceInRegularFile(const QString &path)
{
    auto file = FileHandle::openKnownRegular(path);
    return file ? presenceIn(*file) : std::nullopt;
}

} // namespace tarnwick::SeratoTags
