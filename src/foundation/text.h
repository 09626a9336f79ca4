#pragma once

#include <QString>

namespace tarnwick {

/// True for a blank or a tab: Unicode category Zs, plus U+0009.
bool isBlank(QChar character);

/// True for white space and line breaks: blanks and tabs, plus U+000A to U+000D, U+0085, U+2028 and
/// U+2029.
bool isWhiteSpace(QChar character);

/// Without the blanks and tabs at both ends; line breaks stay.
QStringView trimmedBlanks(QStringView text);

/// Without the white space and line breaks at both ends.
QStringView trimmedWhiteSpace(QStringView text);

/// Lower case by Unicode's locale-independent mapping.
QString lowerCased(const QString &text);

} // namespace tarnwick
