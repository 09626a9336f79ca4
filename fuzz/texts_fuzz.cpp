// The small readers of numbers, dates and lengths.

#include "export/export_util.h"
#include "foundation/dates.h"
#include "foundation/numbers.h"
#include "fuzz_input.h"

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

void checkNumber(const QByteArray &text)
{
    char *end = nullptr;
    const double expected = std::strtod(text.constData(), &end);
    const bool startsPlainly = !text.isEmpty() && !std::isspace(uchar(text[0]));
    const bool isWhole = startsPlainly && end == text.constData() + text.size();
    const auto number = parseDouble(text);
    require(number.has_value() == isWhole, "a number is what the C locale reads as one");
    require(!number || *number == expected || (std::isnan(*number) && std::isnan(expected)),
            "and the same");
}

void checkWhole(const QString &text)
{
    const auto number = parseWhole(text);
    if (!number)
        return;
    bool isNumber = false;
    require(text.toLongLong(&isNumber) == *number && isNumber, "a whole number");
    require(parseWhole(QString::number(*number)) == number, "comes back");
}

void checkDate(const QString &text)
{
    const auto moment = parseIsoSeconds(QStringView(text));
    if (!moment)
        return;
    require(moment->isValid() && moment->timeSpec() == Qt::UTC, "a moment in UTC");
    require(isoSeconds(*moment) == text, "a date comes back as its text");
    require(wholeSeconds(*moment) == *moment, "of whole seconds");
    require(calendarDaysLater(*moment, 30) >= *moment, "days later is later");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = viewOf(data, size).toByteArray();
    const QString text = QString::fromUtf8(bytes);
    if (!bytes.contains('\0'))
        checkNumber(bytes);
    checkWhole(text);
    checkDate(text);
    const qint64 seconds = ExportUtil::seconds(text);
    require(seconds == 0 || text.contains(u':'), "a length has a colon");
    return 0;
}
