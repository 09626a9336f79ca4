// A crate read from its file.

#include "fuzz_input.h"
#include "plain_records.h"
#include "scratch.h"
#include "serato/serato_parser.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    const QByteArrayView bytes = viewOf(data, size);
    QStringList expected;
    for (const PlainRecord &track : plainRecordsIn(bytes)) {
        if (track.tag() != QByteArrayView("otrk"))
            continue;
        for (const PlainRecord &field : plainRecordsIn(track.payload())) {
            if (field.tag() == QByteArrayView("ptrk") && field.payload().size() > 1)
                expected << decodeUtf16BigEndian(field.payload());
        }
    }
    const auto paths = SeratoParser::parseCrate(scratch.put(u"Set.crate"_s, bytes));
    require(paths.has_value(), "a crate that can be opened is read");
    require(*paths == expected, "its paths");
    return 0;
}
