// Several patterns searched in one pass, beside one search for each.

#include "fuzz_input.h"
#include "tags/pattern_scan.h"

using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static constexpr PatternScan::Patterns patterns = {
        QByteArrayView("aaaaaaaaaab"), QByteArrayView("abababababab"), QByteArrayView("aaaabaaaab"),
        QByteArrayView("REPLAYGAIN"),
        QByteArrayView("\x80"
                       "aaaaaaaaa")};
    static constexpr PatternScan scan(patterns);
    const QByteArrayView body = viewOf(data, size);
    const PatternScan::Offsets found = scan.firstOffsets(body);
    for (size_t i = 0; i < patterns.size(); ++i)
        require(found[i] == body.indexOf(patterns[i]), "the first place of each");
    return 0;
}
