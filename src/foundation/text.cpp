#include "foundation/text.h"

namespace tarnwick {

namespace {

template <typename Predicate>
QStringView trimmedIf(QStringView text, Predicate drop)
{
    while (!text.isEmpty() && drop(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && drop(text.back()))
        text.chop(1);
    return text;
}

} // namespace

bool isBlank(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit < 0x80)
        return unit == u' ' || unit == u'\t';
    return character.category() == QChar::Separator_Space;
}

bool isWhiteSpace(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= 0x0A && unit <= 0x0D)
        return true;
    return unit == 0x85 || unit == 0x2028 || unit == 0x2029 || isBlank(character);
}

QStringView trimmedBlanks(QStringView text)
{
    return trimmedIf(text, isBlank);
}

QStringView trimmedWhiteSpace(QStringView text)
{
    return trimmedIf(text, isWhiteSpace);
}

QString lowerCased(const QString &text)
{
    return text.toLower();
}

} // namespace tarnwick
