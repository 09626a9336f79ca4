#include "analysis/folded_text.h"

#include "foundation/text.h"

namespace tarnwick {

namespace {

char16_t asciiLowerCased(char16_t unit)
{
    return char16_t(unit + (char16_t(unit - u'A') < 26 ? 0x20 : 0));
}

} // namespace

void appendLowerCased(std::u16string &key, QStringView text)
{
    const size_t start = key.size();
    const size_t length = size_t(text.size());
    key.resize(start + length);
    const char16_t *in = text.utf16();
    char16_t *out = key.data() + start;
    char16_t seen = 0;
    for (size_t i = 0; i < length; ++i) {
        seen |= in[i];
        out[i] = asciiLowerCased(in[i]);
    }
    if (seen < 0x80)
        return;
    const QString lowered = lowerCased(text.toString());
    key.resize(start);
    key.append(QStringView(lowered).utf16(), size_t(lowered.size()));
}

void appendLowerCasedTrimmed(std::u16string &key, QStringView text)
{
    const size_t start = key.size();
    appendLowerCased(key, text);
    while (key.size() > start && isWhiteSpace(key.back()))
        key.pop_back();
    size_t lead = start;
    while (lead < key.size() && isWhiteSpace(key[lead]))
        ++lead;
    key.erase(start, lead - start);
}

} // namespace tarnwick
