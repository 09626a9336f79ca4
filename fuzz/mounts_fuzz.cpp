// The system's list of mounts.

#include "fuzz_input.h"
#include "platform/mounts.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView list = viewOf(data, size);
    const platform::ScopedMounts scoped(list.toByteArray());
    const auto mounts = platform::Mounts::now();
    const auto &noDisks = mounts.thatAreNoDisks();
    require(noDisks.size() <= list.toByteArray().count('\n') + 1, "at most one a line");
    for (const QByteArray &place : noDisks) {
        const QString path = QString::fromUtf8(place);
        if (path.startsWith(u'/') && path.toUtf8() == place && !path.contains(u"//"_s) &&
            !path.endsWith(u'/') && !path.contains(u"/."_s))
            require(mounts.mayNeverAnswer(path + u"/a.mp3"_s), "what lies below is not asked for");
    }
    return 0;
}
