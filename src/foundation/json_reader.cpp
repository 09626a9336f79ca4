#include "foundation/json_reader.h"

#include "foundation/utf8.h"

#include <cstring>

namespace tarnwick {

namespace {

/// Deeper nesting than any store has; beyond it the input is an attack on the stack.
constexpr int deepestNesting = 512;

bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

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
    if (isDigit(digit))
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

} // namespace

JsonReader::JsonReader(QByteArrayView bytes)
    : m_bytes(bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        m_at = 3; // a mark that some editors put ahead of UTF-8
}

bool JsonReader::fail()
{
    m_failed = true;
    return false;
}

qsizetype JsonReader::skipSpace()
{
    const qsizetype start = m_at;
    while (m_at < m_bytes.size() && isSpace(m_bytes[m_at]))
        ++m_at;
    return m_at - start;
}

qsizetype JsonReader::valueStart()
{
    skipSpace();
    return m_at;
}

QByteArrayView JsonReader::bytesBetween(qsizetype start, qsizetype end) const
{
    return m_bytes.sliced(start, end - start);
}

/// Compares the white space from `start` on with a line break and the indent of that depth.
void JsonReader::noteLineBreak(qsizetype start, qsizetype depth)
{
    if (!m_isWrittenForm)
        return;
    m_isWrittenForm = m_at - start == 1 + 2 * depth && m_bytes[start] == '\n';
    for (qsizetype i = start + 1; i < m_at && m_isWrittenForm; ++i)
        m_isWrittenForm = m_bytes[i] == ' ';
}

bool JsonReader::open(char bracket)
{
    skipSpace();
    if (m_failed || m_at == m_bytes.size() || m_bytes[m_at] != bracket || m_depth == deepestNesting)
        return fail();
    ++m_at;
    ++m_depth;
    m_isFirst = true;
    return true;
}

/// Moves to the next element, past the comma ahead of it; false at the closing bracket, which it
/// passes, and for a failure.
bool JsonReader::nextElement(char closing)
{
    if (m_failed)
        return false;
    const bool isFirst = std::exchange(m_isFirst, false);
    qsizetype start = m_at;
    skipSpace();
    if (m_at == m_bytes.size())
        return fail();
    if (m_bytes[m_at] == closing) {
        if (!isFirst || m_at != start)
            noteLineBreak(start, m_depth - 1);
        ++m_at;
        --m_depth;
        return false;
    }
    if (!isFirst) {
        if (m_bytes[m_at] != ',')
            return fail();
        m_isWrittenForm = m_isWrittenForm && m_at == start;
        start = ++m_at;
        skipSpace();
    }
    noteLineBreak(start, m_depth);
    return true;
}

bool JsonReader::readKey(QByteArray &key)
{
    return utf8(key) && takeColon();
}

bool JsonReader::takeColon()
{
    const bool isClose = skipSpace() == 0;
    if (m_at == m_bytes.size() || m_bytes[m_at] != ':')
        return fail();
    ++m_at;
    const qsizetype start = m_at;
    const bool isOneApart = skipSpace() == 1 && m_bytes[start] == ' ';
    m_isWrittenForm = m_isWrittenForm && isClose && isOneApart;
    return true;
}

/// Where a character of several bytes ends; -1 if that is no UTF-8.
qsizetype JsonReader::afterMultibyte(qsizetype at) const
{
    const auto byte = [&](qsizetype i) {
        return i < m_bytes.size() ? uchar(m_bytes[i]) : uchar(0);
    };
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

/// Moves past a text; `end` is where its closing mark stands.
bool JsonReader::scanText(qsizetype &end, bool &hasEscapes)
{
    skipSpace();
    if (m_failed || m_at == m_bytes.size() || m_bytes[m_at] != '"')
        return fail();
    hasEscapes = false;
    for (qsizetype at = m_at + 1;;) {
        at = plainEnd(m_bytes, at);
        if (at >= m_bytes.size() || uchar(m_bytes[at]) < 0x20)
            return fail();
        if (m_bytes[at] == '"') {
            end = at;
            return true;
        }
        if (m_bytes[at] == '\\') {
            hasEscapes = true;
            at += 2; // what is escaped is looked at later; it may be a quotation mark
        } else if ((at = afterMultibyte(at)) < 0) {
            return fail();
        }
    }
}

bool JsonReader::utf8(QByteArray &out)
{
    qsizetype end = 0;
    bool hasEscapes = false;
    if (!scanText(end, hasEscapes))
        return false;
    const QByteArrayView encoded = bytesBetween(m_at + 1, end);
    m_at = end + 1;
    if (hasEscapes)
        return unescape(encoded, out) || fail();
    out = QByteArray::fromRawData(encoded.data(), encoded.size());
    return true;
}

bool JsonReader::text(QString &out)
{
    QByteArray bytes;
    if (!utf8(bytes))
        return false;
    out = toText(bytes);
    return true;
}

QString JsonReader::toText(QByteArrayView utf8)
{
    return decodeUtf8(utf8);
}

bool JsonReader::unescape(QByteArrayView encoded, QByteArray &out)
{
    out = QByteArray();
    out.reserve(encoded.size());
    for (qsizetype at = 0; at < encoded.size();) {
        const void *found = std::memchr(encoded.data() + at, '\\', size_t(encoded.size() - at));
        const qsizetype plain =
            found ? static_cast<const char *>(found) - encoded.data() : encoded.size();
        out.append(encoded.data() + at, plain - at);
        at = plain;
        if (found && !unescapeOne(encoded, at, out))
            return false;
    }
    return true;
}

bool JsonReader::unescapeOne(QByteArrayView encoded, qsizetype &at, QByteArray &out)
{
    const char letter = at + 1 < encoded.size() ? encoded[at + 1] : '\0';
    at += 2;
    if (letter == 'u')
        return unescapeUnicode(encoded, at, out);
    for (const Escape &escape : escapes) {
        if (escape.letter == letter) {
            m_isWrittenForm = m_isWrittenForm && escape.isWritten;
            out.append(escape.byte);
            return true;
        }
    }
    return false;
}

/// One "\uXXXX", or two of them for a character beyond the first plane. Half of such a pair alone
/// is no text.
bool JsonReader::unescapeUnicode(QByteArrayView encoded, qsizetype &at, QByteArray &out)
{
    const int unit = hexUnit(encoded, at);
    if (unit < 0 || QChar::isLowSurrogate(char32_t(unit)))
        return false;
    m_isWrittenForm = m_isWrittenForm && isWrittenByNumber(unit, encoded.sliced(at, 4));
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
    out.append(character.toUtf8());
    return true;
}

bool JsonReader::takeWord(QByteArrayView word)
{
    skipSpace();
    if (m_failed || !m_bytes.sliced(m_at).startsWith(word))
        return false;
    m_at += word.size();
    return true;
}

bool JsonReader::takeNull()
{
    if (!takeWord("null"))
        return false;
    // What has no value is left out by the writer.
    m_isWrittenForm = false;
    return true;
}

bool JsonReader::boolean(bool &out)
{
    out = takeWord("true");
    return out || takeWord("false") || fail();
}

std::optional<JsonNumber::Token> JsonReader::takeNumber()
{
    skipSpace();
    const auto token = m_failed ? std::nullopt : JsonNumber::at(bytesBetween(m_at, m_bytes.size()));
    if (!token) {
        fail();
        return std::nullopt;
    }
    m_at += token->text.size();
    if (!token->isWhole || token->text == "-0")
        m_isWrittenForm = false; // many texts stand for one number
    return token;
}

template <typename Whole>
bool JsonReader::wholeNumber(Whole &out)
{
    const auto token = takeNumber();
    const auto number = token ? JsonNumber::toWhole<Whole>(*token) : std::nullopt;
    if (!number)
        return fail();
    out = *number;
    return true;
}

bool JsonReader::whole(quint64 &out)
{
    return wholeNumber(out);
}

bool JsonReader::whole(qint64 &out)
{
    return wholeNumber(out);
}

bool JsonReader::number(double &out)
{
    const auto token = takeNumber();
    m_isWrittenForm = false;
    const auto number = token ? JsonNumber::toDouble(token->text) : std::nullopt;
    if (!number)
        return fail();
    out = *number;
    return true;
}

bool JsonReader::skip()
{
    skipSpace();
    const char first = m_at < m_bytes.size() ? m_bytes[m_at] : '\0';
    QByteArray text;
    double value = 0;
    bool flag = false;
    switch (first) {
    case '{':
        return object([this](QByteArrayView) { return skip(); });
    case '[':
        return array([this] { return skip(); });
    case '"':
        return utf8(text);
    case 't':
    case 'f':
        return boolean(flag);
    case 'n':
        return takeNull() || fail();
    default:
        return number(value);
    }
}

bool JsonReader::end()
{
    skipSpace();
    return !m_failed && m_at == m_bytes.size();
}

} // namespace tarnwick
