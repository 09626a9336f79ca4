#include "foundation/json_number.h"

#include "foundation/numbers.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::JsonNumber {

namespace {

/// Zero whatever its exponent.
bool statesZero(QByteArrayView text)
{
    const auto *const exponent = std::find_if(text.begin(), text.end(),
                                              [](char byte) { return byte == 'e' || byte == 'E'; });
    return std::none_of(text.begin(), exponent,
                        [](char byte) { return isDigit(byte) && byte != '0'; });
}

} // namespace

std::optional<Token> at(QByteArrayView bytes)
{
    qsizetype end = 0;
    const auto is = [&](char wanted) { return end < bytes.size() && bytes[end] == wanted; };
    const auto digits = [&] {
        const qsizetype start = end;
        while (end < bytes.size() && isDigit(bytes[end]))
            ++end;
        return end > start;
    };
    if (is('-'))
        ++end;
    const bool startsWithZero = is('0');
    const qsizetype start = end;
    if (!digits() || (startsWithZero && end - start > 1))
        return std::nullopt;
    bool isWhole = true;
    if (is('.')) {
        ++end;
        isWhole = false;
        if (!digits())
            return std::nullopt;
    }
    if (is('e') || is('E')) {
        ++end;
        isWhole = false;
        if (is('+') || is('-'))
            ++end;
        if (!digits())
            return std::nullopt;
    }
    return Token{bytes.first(end), isWhole};
}

std::optional<double> toDouble(QByteArrayView text)
{
    const std::optional<double> value = parseDouble(text);
    if (!value || !std::isfinite(*value) || (*value == 0 && !statesZero(text)))
        return std::nullopt;
    return value;
}

} // namespace tarnwick::JsonNumber
