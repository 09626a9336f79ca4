// One entry of the cue vault.

#include "fuzz_input.h"
#include "safety/cue_entry.h"

#include <optional>

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

std::optional<CueEntry> entryIn(const QByteArray &file)
{
    JsonReader json(file);
    CueEntry entry;
    return CueEntry::read(json, file, entry) && json.end() ? std::optional(entry) : std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto entry = entryIn(viewOf(data, size).toByteArray());
    if (!entry)
        return 0;
    noteRead();
    const auto again = entryIn(entry->text().toByteArray());
    require(again == entry, "an entry comes back from its text");
    require(again->text() == entry->text(), "which stays the same");
    const SeratoGEOB::CueFrames frames = entry->payloads();
    require(again->payloads() == frames, "and so do the frames");
    const CueEntry made(frames, entry->capturedAt(), entry->fileSize());
    require(made.payloads() == frames, "frames can be kept and taken out again");
    require(!made.hasGrid() || entry->hasGrid(), "a grid comes from a grid");
    require(!made.hasMarkers() || entry->hasMarkers(), "markers come from markers");
    return 0;
}
