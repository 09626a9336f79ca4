// The record of a snapshot.

#include "fuzz_input.h"
#include "safety/snapshot.h"

#include <optional>

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

std::optional<Snapshot> snapshotIn(QByteArrayView bytes, bool &hasWrittenForm)
{
    JsonReader json(bytes);
    Snapshot snapshot;
    const bool isGood = Snapshot::read(json, snapshot, &hasWrittenForm) && json.end();
    return isGood ? std::optional(snapshot) : std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = viewOf(data, size);
    bool hasWrittenForm = false;
    const auto snapshot = snapshotIn(input, hasWrittenForm);
    if (!snapshot)
        return 0;
    QByteArray written;
    JsonWriter json(written, JsonWriter::Style::Pretty);
    snapshot->write(json);
    if (hasWrittenForm)
        require(input.toByteArray().trimmed() == written, "what looks as written is");
    require(snapshotIn(written, hasWrittenForm) == snapshot, "the record comes back");
    require(hasWrittenForm, "in the form in which it is written");
    return 0;
}
