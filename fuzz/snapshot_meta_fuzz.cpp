// The record of a snapshot.

#include "fuzz_input.h"
#include "safety/snapshot.h"

#include <optional>

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

struct Meta
{
    Snapshot snapshot;
    /// The record without what may stand around it: a mark of the encoding, white space.
    QByteArrayView text;
    bool hasWrittenForm = false;
};

std::optional<Meta> metaIn(QByteArrayView bytes)
{
    JsonReader json(bytes);
    Meta meta;
    const qsizetype start = json.valueStart();
    if (!Snapshot::read(json, meta.snapshot, &meta.hasWrittenForm))
        return std::nullopt;
    meta.text = json.bytesBetween(start, json.position());
    return json.end() ? std::optional(meta) : std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = viewOf(data, size);
    const auto meta = metaIn(input);
    if (!meta)
        return 0;
    noteRead();
    QByteArray written;
    JsonWriter json(written, JsonWriter::Style::Pretty);
    meta->snapshot.write(json);
    if (meta->hasWrittenForm)
        require(meta->text == written, "what looks as written is");
    const auto again = metaIn(written);
    require(again && again->snapshot == meta->snapshot, "the record comes back");
    require(again->hasWrittenForm, "in the form in which it is written");
    return 0;
}
