#pragma once

#include <QByteArrayView>

#include <charconv>
#include <cmath>
#include <optional>

/// Numbers as JSON writes them, whose grammar is stricter than that of any parser of numbers.
namespace tarnwick::JsonNumber {

struct Token
{
    QByteArrayView text;
    bool isWhole = true; ///< has neither a fraction nor an exponent
};

constexpr bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// The number that the bytes begin with, whatever is behind it.
std::optional<Token> at(QByteArrayView bytes);

/// Nothing where no double comes near to the number, for being too large or too small.
std::optional<double> toDouble(QByteArrayView text);

/// The number if it is whole, however it is written ("1e2", "1.0"); from 2^53 on only in digits.
/// Nothing if it doesn't fit.
template <typename Whole>
std::optional<Whole> toWhole(const Token &token)
{
    if (token.text == "-0")
        return Whole(0);
    if (token.isWhole) {
        Whole whole = 0;
        const auto result = std::from_chars(token.text.begin(), token.text.end(), whole);
        const bool isAll = result.ec == std::errc() && result.ptr == token.text.end();
        return isAll ? std::optional(whole) : std::nullopt;
    }
    // A double tells every whole number below from its neighbours.
    constexpr double inexact = 9007199254740992.0;
    const std::optional<double> value = toDouble(token.text);
    const bool fits = value && std::abs(*value) < inexact && double(qint64(*value)) == *value &&
                      (Whole(-1) < 0 || *value >= 0);
    return fits ? std::optional(Whole(*value)) : std::nullopt;
}

} // namespace tarnwick::JsonNumber
