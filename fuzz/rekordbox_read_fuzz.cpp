// A collection of any content, read for its paths.

#include "export/rekordbox_exporter.h"
#include "fuzz_input.h"
#include "scratch.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    const QByteArrayView text = viewOf(data, size);
    scratch.put(u"rekordbox.xml"_s, text);
    const auto paths = RekordboxExporter::readPaths(scratch.path({}));
    require(paths.has_value() == text.isValidUtf8(), "any text is read");
    if (!paths)
        return 0;
    if (!paths->isEmpty())
        noteRead();
    const qsizetype places = text.toByteArray().count("Location=\"file://localhost");
    require(paths->size() <= places, "a path for each place at most");
    return 0;
}
