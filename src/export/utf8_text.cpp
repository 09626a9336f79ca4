#include "export/utf8_text.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace tarnwick {

namespace {

constexpr qsizetype smallestBuffer = 256;

// The most bytes that one code unit of UTF-16 takes.
constexpr qsizetype mostInUtf8 = 3;
constexpr qsizetype mostInXml = 6; // "&quot;"
constexpr qsizetype mostEncoded = 3 * mostInUtf8;

constexpr qsizetype mostDigits = 20;

constexpr std::array<std::string_view, 128> entities = [] {
    std::array<std::string_view, 128> texts{};
    texts['&'] = "&amp;";
    texts['<'] = "&lt;";
    texts['>'] = "&gt;";
    texts['"'] = "&quot;";
    texts['\''] = "&apos;";
    return texts;
}();

constexpr std::array<bool, 128> isKeptInUrls = [] {
    std::array<bool, 128> kept{};
    for (const char character : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                 "abcdefghijklmnopqrstuvwxyz0123456789-._~/"))
        kept[static_cast<unsigned char>(character)] = true;
    return kept;
}();

char *put(char *to, std::string_view text)
{
    std::memcpy(to, text.data(), text.size());
    return to + text.size();
}

char *putUtf8(char *to, char32_t scalar)
{
    const auto tail = [scalar](int shift) { return char(0x80 | ((scalar >> shift) & 0x3F)); };
    if (scalar < 0x800) {
        *to++ = char(0xC0 | (scalar >> 6));
    } else if (scalar < 0x10000) {
        *to++ = char(0xE0 | (scalar >> 12));
        *to++ = tail(6);
    } else {
        *to++ = char(0xF0 | (scalar >> 18));
        *to++ = tail(12);
        *to++ = tail(6);
    }
    *to++ = tail(0);
    return to;
}

/// The character at a place; `unit` comes to stand on its last code unit.
char32_t scalarAt(const QChar *&unit, const QChar *end)
{
    if (!unit->isSurrogate())
        return unit->unicode();
    if (unit->isLowSurrogate() || unit + 1 == end || !unit[1].isLowSurrogate())
        return QChar::ReplacementCharacter;
    ++unit;
    return QChar::surrogateToUcs4(unit[-1], *unit);
}

char *putEncoded(char *to, uchar byte)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    *to++ = '%';
    *to++ = digits[byte >> 4];
    *to++ = digits[byte & 15];
    return to;
}

/// Appends all characters: those of ASCII by `putAscii`, the others by `putOther`.
template <typename PutAscii, typename PutOther>
char *putAll(char *to, QStringView text, PutAscii putAscii, PutOther putOther)
{
    const QChar *const end = text.data() + text.size();
    for (const QChar *unit = text.data(); unit != end; ++unit) {
        const char16_t code = unit->unicode();
        to = code < 0x80 ? putAscii(to, code) : putOther(to, scalarAt(unit, end));
    }
    return to;
}

} // namespace

void Utf8Text::addText(QStringView text)
{
    const auto putAscii = [](char *to, char16_t code) {
        *to = char(code);
        return to + 1;
    };
    setEnd(putAll(room(text.size() * mostInUtf8), text, putAscii, putUtf8));
}

void Utf8Text::addXml(QStringView text)
{
    const auto putAscii = [](char *to, char16_t code) {
        if (!entities[code].empty())
            return put(to, entities[code]);
        *to = char(code);
        return to + 1;
    };
    setEnd(putAll(room(text.size() * mostInXml), text, putAscii, putUtf8));
}

void Utf8Text::addPercentEncoded(QStringView text)
{
    const auto putAscii = [](char *to, char16_t code) {
        if (!isKeptInUrls[code])
            return putEncoded(to, uchar(code));
        *to = char(code);
        return to + 1;
    };
    const auto putOther = [](char *to, char32_t scalar) {
        char utf8[4];
        const char *const end = putUtf8(utf8, scalar);
        for (const char *byte = utf8; byte != end; ++byte)
            to = putEncoded(to, uchar(*byte));
        return to;
    };
    setEnd(putAll(room(text.size() * mostEncoded), text, putAscii, putOther));
}

void Utf8Text::addNumber(qint64 number)
{
    char *const to = room(mostDigits);
    setEnd(std::to_chars(to, to + mostDigits, number).ptr);
}

void Utf8Text::grow(qsizetype count)
{
    m_buffer.resize(std::max({smallestBuffer, 2 * m_buffer.size(), m_size + count}));
    m_data = m_buffer.data();
}

} // namespace tarnwick
