#include "foundation/json_text.h"

#include "foundation/json_number.h"

#include <QString>

#include <cstring>

namespace tarnwick::JsonText {

namespace {

/// True for what ends the plain stretch of a text: the closing mark, an escape, a control, and the
/// bytes of anything beyond ASCII.
bool isSpecial(uchar byte)
{
    return byte == '"' || byte == '\\' || byte < 0x20 || byte >= 0x80;
}

/// The first special byte at or behind `at`. Looks at many bytes at a time: the texts of the cue
/// vault are thousands of bytes long.
qsizetype plainEnd(QByteArrayView bytes, qsizetype at)
{
    constexpr qsizetype stride = 32;
    const auto *data = reinterpret_cast<const uchar *>(bytes.data());
    for (; at + stride <= bytes.size(); at += stride) {
        uchar any = 0;
        for (qsizetype i = 0; i < stride; ++i) {
            const uchar byte = data[at + i];
            any |= uchar(byte == '"') | uchar(byte == '\\') | uchar(byte < 0x20) | uchar(byte >> 7);
        }
        if (any != 0)
            break;
    }
    while (at < bytes.size() && !isSpecial(data[at]))
        ++at;
    return at;
}

int hexValue(char digit)
{
    if (JsonNumber::isDigit(digit))
        return digit - '0';
    const char lower = char(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The code unit of the four digits at `at`, or -1.
int hexUnit(QByteArrayView encoded, qsizetype at)
{
    if (encoded.size() - at < 4)
        return -1;
    int unit = 0;
    for (qsizetype i = at; i < at + 4; ++i) {
        const int digit = hexValue(encoded[i]);
        if (digit < 0)
            return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

struct Escape
{
    char letter;
    char byte;
    bool isWritten; ///< JsonWriter uses it
};

constexpr Escape escapes[] = {
    {'"', '"', true},  {'\\', '\\', true}, {'/', '/', false}, {'b', '\b', true},
    {'f', '\f', true}, {'n', '\n', true},  {'r', '\r', true}, {'t', '\t', true},
};

/// True for a control that JsonWriter states by its number, in these very digits.
bool isWrittenByNumber(int unit, QByteArrayView digits)
{
    if (unit >= 0x20)
        return false;
    for (const Escape &escape : escapes) {
        if (escape.byte == char(unit))
            return false;
    }
    return digits == QByteArray::number(unit, 16).rightJustified(4, '0');
}

/// Where a character of several bytes ends; -1 if that is no UTF-8.
qsizetype afterMultibyte(QByteArrayView bytes, qsizetype at)
{
    const auto byte = [&](qsizetype i) { return i < bytes.size() ? uchar(bytes[i]) : uchar(0); };
    const uchar lead = byte(at);
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    // The second byte's range rules out surrogates, values past the last one, and forms too long.
    const uchar least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const uchar most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (lead < 0xC2 || lead > 0xF4 || byte(at + 1) < least || byte(at + 1) > most)
        return -1;
    for (int i = 2; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return -1;
    }
    return at + length;
}

/// One "\uXXXX", or two of them for a character beyond the first plane. Half of such a pair alone
/// is no text.
bool addUnicode(QByteArrayView encoded, qsizetype &at, Decoded &out)
{
    const int unit = hexUnit(encoded, at);
    if (unit < 0 || QChar::isLowSurrogate(char32_t(unit)))
        return false;
    out.isWrittenForm = out.isWrittenForm && isWrittenByNumber(unit, encoded.sliced(at, 4));
    at += 4;
    QString character{QChar(char16_t(unit))};
    if (QChar::isHighSurrogate(char32_t(unit))) {
        const bool isPair = encoded.sliced(at).startsWith("\\u");
        const int low = isPair ? hexUnit(encoded, at + 2) : -1;
        if (low < 0 || !QChar::isLowSurrogate(char32_t(low)))
            return false;
        character.append(QChar(char16_t(low)));
        at += 6;
    }
    out.bytes.append(character.toUtf8());
    return true;
}

/// The character of the escape at `at`, and past it.
bool addEscaped(QByteArrayView encoded, qsizetype &at, Decoded &out)
{
    const char letter = at + 1 < encoded.size() ? encoded[at + 1] : '\0';
    at += 2;
    if (letter == 'u')
        return addUnicode(encoded, at, out);
    for (const Escape &escape : escapes) {
        if (escape.letter == letter) {
            out.isWrittenForm = out.isWrittenForm && escape.isWritten;
            out.bytes.append(escape.byte);
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<Token> at(QByteArrayView bytes, qsizetype start)
{
    if (start >= bytes.size() || bytes[start] != '"')
        return std::nullopt;
    bool hasEscapes = false;
    for (qsizetype at = start + 1;;) {
        at = plainEnd(bytes, at);
        if (at >= bytes.size() || uchar(bytes[at]) < 0x20)
            return std::nullopt;
        if (bytes[at] == '"')
            return Token{bytes.sliced(start + 1, at - start - 1), hasEscapes};
        if (bytes[at] == '\\') {
            hasEscapes = true;
            at += 2; // what is escaped is looked at later; it may be a quotation mark
        } else if ((at = afterMultibyte(bytes, at)) < 0) {
            return std::nullopt;
        }
    }
}

std::optional<Decoded> decode(QByteArrayView encoded)
{
    Decoded out;
    out.bytes.reserve(encoded.size());
    for (qsizetype at = 0; at < encoded.size();) {
        const void *found = std::memchr(encoded.data() + at, '\\', size_t(encoded.size() - at));
        const qsizetype plain =
            found ? static_cast<const char *>(found) - encoded.data() : encoded.size();
        out.bytes.append(encoded.data() + at, plain - at);
        at = plain;
        if (found && !addEscaped(encoded, at, out))
            return std::nullopt;
    }
    return out;
}

} // namespace tarnwick::JsonText
