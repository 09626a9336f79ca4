// What a title tells of its cut, beside the same rule in regular expressions.

#include "analysis/title_cut.h"
#include "fuzz_input.h"
#include "support/slow_title_cut.h"

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

void check(const QString &title)
{
    require(baseAndCut(title) == testing::slowBaseAndCut(title), "both rules agree");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes = viewOf(data, size);
    check(QString::fromUtf8(bytes));
    check(decodeUtf16BigEndian(bytes));
    return 0;
}
