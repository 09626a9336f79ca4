#include "foundation/numbers.h"

#include <algorithm>
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

QByteArray withDecimals(double number, int decimals)
{
    char digits[352]; // the largest double has 309 digits ahead of its point
    const auto written = std::to_chars(std::begin(digits), std::end(digits), number,
                                       std::chars_format::fixed, decimals);
    return QByteArray(digits, written.ptr - digits);
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// The value of digits with at most one point among them, what nearly every number of a library
/// looks like: without a copy, and exactly what strtod gives. Nothing for any other text, or one of
/// so many digits that a double can't hold them all.
std::optional<double> plainDecimal(QStringView text)
{
    constexpr int mostDigits = 15;
    static constexpr double powersOfTen[] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    qint64 digits = 0;
    int count = 0;
    qsizetype point = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'.' && point < 0) {
            point = i;
            continue;
        }
        if (!isDigit(text[i]) || ++count > mostDigits)
            return std::nullopt;
        digits = digits * 10 + (text[i].unicode() - u'0');
    }
    if (count == 0)
        return std::nullopt;
    // Both numbers are exact, so that the division is rounded once, as it should be.
    return point < 0 ? double(digits) : double(digits) / powersOfTen[text.size() - point - 1];
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
    if (const std::optional<double> value = plainDecimal(text))
        return value;
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
    constexpr qsizetype digitsThatAlwaysFit = 18;
    const bool isSigned = !text.isEmpty() && (text.front() == u'+' || text.front() == u'-');
    const QStringView digits = text.sliced(isSigned ? 1 : 0);
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    if (digits.size() > digitsThatAlwaysFit) {
        bool fits = false;
        const qint64 value = text.toLongLong(&fits);
        return fits ? std::optional(value) : std::nullopt;
    }
    qint64 value = 0;
    for (const QChar digit : digits)
        value = value * 10 + (digit.unicode() - u'0');
    return text.front() == u'-' ? -value : value;
}

QByteArray oneDecimal(double number)
{
    return withDecimals(number, 1);
}

QByteArray signedOneDecimal(double number)
{
    return (std::signbit(number) ? "" : "+") + oneDecimal(number);
}

QByteArray twoDecimals(double number)
{
    return withDecimals(number, 2);
}

} // namespace tarnwick
