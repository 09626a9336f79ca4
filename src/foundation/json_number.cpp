#include "foundation/json_number.h"

#include "foundation/numbers.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::JsonNumber {

namespace {

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

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
    qsizetype at = 0;
    const auto is = [&](char wanted) { return at < bytes.size() && bytes[at] == wanted; };
    const auto digits = [&] {
        const qsizetype start = at;
        while (at < bytes.size() && isDigit(bytes[at]))
            ++at;
        return at > start;
    };
    if (is('-'))
        ++at;
    const bool startsWithZero = is('0');
    const qsizetype start = at;
    if (!digits() || (startsWithZero && at - start > 1))
        return std::nullopt;
    bool isWhole = true;
    if (is('.')) {
        ++at;
        isWhole = false;
        if (!digits())
            return std::nullopt;
    }
    if (is('e') || is('E')) {
        ++at;
        isWhole = false;
        if (is('+') || is('-'))
            ++at;
        if (!digits())
            return std::nullopt;
    }
    return Token{bytes.first(at), isWhole};
}

std::optional<double> toDouble(QByteArrayView text)
{
    const std::optional<double> value = parseDouble(text);
    if (!value || !std::isfinite(*value) || (*value == 0 && !statesZero(text)))
        return std::nullopt;
    return value;
}

} // namespace tarnwick::JsonNumber
