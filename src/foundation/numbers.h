#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace tarnwick {

/// `a` of `b` in whole per cent, halves rounded away from zero; 100 where `b` is 0.
int percent(qint64 a, qint64 b);

/// `a` of `b` in per cent before any rounding; 100 where `b` is 0. For thresholds that truncate.
double exactPercent(qint64 a, qint64 b);

/// The number that the whole text states, in the C locale's syntax ("1e2", "+5", "0x10", "inf" and
/// "nan" count). Nothing if the text is empty, begins with white space or has anything behind the
/// number.
std::optional<double> parseDouble(QByteArrayView text);
std::optional<double> parseDouble(QStringView text);

/// The tempo that a text states, in beats a minute: parseDouble, where the value is finite.
std::optional<double> parseTempo(QStringView text);

/// A whole number: an optional sign and ASCII digits, nothing else, within 64 bits.
std::optional<qint64> parseWhole(QStringView text);

/// The number as "%.1f" gives it in the C locale, with a point wherever the user may be; a half
/// goes to the even digit.
QByteArray oneDecimal(double number);
/// The same as "%+.1f".
QByteArray signedOneDecimal(double number);
/// The same as "%.2f".
QByteArray twoDecimals(double number);

} // namespace tarnwick
