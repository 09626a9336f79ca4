#include "foundation/numbers.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include <locale.h>
#ifdef __APPLE__ // platform: allowed, newlocale lies elsewhere there
#include <xlocale.h>
#endif

namespace tarnwick {

namespace {

locale_t cLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return locale;
}

bool startsWithWhiteSpace(QByteArrayView text)
{
    const char first = text.front();
    return first == ' ' || (first >= 9 && first <= 13);
}

} // namespace

double exactPercent(qint64 a, qint64 b)
{
    return b == 0 ? 100.0 : double(a) / double(b) * 100.0;
}

int percent(qint64 a, qint64 b)
{
    return int(std::round(exactPercent(a, b)));
}

std::optional<double> parseDouble(QByteArrayView text)
{
    if (text.isEmpty() || startsWithWhiteSpace(text))
        return std::nullopt;
    const QByteArray terminated = text.toByteArray();
    char *end = nullptr;
    const double value = strtod_l(terminated.constData(), &end, cLocale());
    if (end != terminated.constData() + terminated.size())
        return std::nullopt;
    return value;
}

std::optional<double> parseDouble(QStringView text)
{
    for (const QChar character : text) {
        if (character.unicode() >= 0x80)
            return std::nullopt;
    }
    return parseDouble(QByteArrayView(text.toLatin1()));
}

std::optional<double> parseTempo(QStringView text)
{
    const std::optional<double> value = parseDouble(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<qint64> parseWhole(QStringView text)
{
    QStringView digits = text;
    if (!digits.isEmpty() && (digits.front() == u'+' || digits.front() == u'-'))
        digits = digits.sliced(1);
    if (digits.isEmpty())
        return std::nullopt;
    for (const QChar character : digits) {
        if (character < u'0' || character > u'9')
            return std::nullopt;
    }
    bool fits = false;
    const qint64 value = text.toLongLong(&fits);
    return fits ? std::optional(value) : std::nullopt;
}

QByteArray twoDecimals(double number)
{
    char digits[352]; // the largest double has 309 digits ahead of its point
    const auto written =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed, 2);
    return QByteArray(digits, written.ptr - digits);
}

} // namespace tarnwick
