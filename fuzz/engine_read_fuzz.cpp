// A database of any content, read for its paths as an earlier Engine export.

#include "export/engine_exporter.h"
#include "fuzz_input.h"
#include "scratch.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    const QByteArrayView bytes = viewOf(data, size);
    const QString path = scratch.put(u"m.db"_s, bytes);
    const QSet<QString> paths = EngineExporter::readPaths(path);
    if (!paths.isEmpty())
        noteRead();
    require(paths.isEmpty() || bytes.startsWith("SQLite format 3"), "paths come from a database");
    require(EngineExporter::readPaths(path) == paths, "looking changes nothing");
    return 0;
}
