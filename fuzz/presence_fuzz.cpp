// The quick look at a tag, beside a plain search through all of it.

#include "fuzz_input.h"
#include "scratch.h"
#include "tags/serato_tags.h"

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

/// What lies behind the header, as far as the header says; nothing where no tag is.
std::optional<QByteArrayView> bodyOf(QByteArrayView file)
{
    if (file.size() < 11 || !file.startsWith("ID3"))
        return std::nullopt;
    qint64 size = 0;
    for (int i = 0; i < 4; ++i)
        size |= qint64(uchar(file[6 + i])) << (21 - 7 * i);
    if (size < 1 || size > 7'999'999)
        return std::nullopt;
    return file.sliced(10, std::min<qint64>(size, file.size() - 10));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    const QByteArrayView file = viewOf(data, size);
    const QString path = scratch.put(u"a.mp3"_s, file);
    const auto found = SeratoTags::presence(path);
    require(found == SeratoTags::presenceInRegularFile(path), "the same in less calls");
    const auto body = bodyOf(file);
    require(found.has_value() == body.has_value(), "whether there is a tag");
    if (!body)
        return 0;
    noteRead();
    const auto has = [&](QByteArrayView text) { return body->indexOf(text) >= 0; };
    require(found->hasMarkers == has("Serato Markers2"), "markers");
    require(found->hasBeatGrid == has("Serato BeatGrid"), "a beat grid");
    require(found->hasReplayGain == (has("REPLAYGAIN") || has("replaygain")), "a ReplayGain text");
    require(found->hasGain == (found->hasReplayGain || has("Serato Autotags")), "a gain");
    require(!found->autogain || std::isfinite(*found->autogain), "a gain is finite");
    require(!found->autogain || has("Serato Autotags"), "a gain comes from the analysis");
    return 0;
}
