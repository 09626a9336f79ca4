#include "foundation/json_writer.h"

#include <QLocale>

#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace tarnwick {

namespace {

/// The longest form of one code unit: an escape of six characters.
constexpr qsizetype mostBytesAUnit = 6;

char *addUtf8(char *to, char32_t scalar)
{
    if (scalar < 0x80) {
        *to++ = char(scalar);
    } else if (scalar < 0x800) {
        *to++ = char(0xC0 | (scalar >> 6));
        *to++ = char(0x80 | (scalar & 0x3F));
    } else if (scalar < 0x10000) {
        *to++ = char(0xE0 | (scalar >> 12));
        *to++ = char(0x80 | ((scalar >> 6) & 0x3F));
        *to++ = char(0x80 | (scalar & 0x3F));
    } else {
        *to++ = char(0xF0 | (scalar >> 18));
        *to++ = char(0x80 | ((scalar >> 12) & 0x3F));
        *to++ = char(0x80 | ((scalar >> 6) & 0x3F));
        *to++ = char(0x80 | (scalar & 0x3F));
    }
    return to;
}

bool isPlain(char16_t unit)
{
    return unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\';
}

/// The letter that stands behind the backslash of a short escape; 0 for a unit without one.
char shortEscape(char16_t unit)
{
    switch (unit) {
    case u'"':
    case u'\\':
        return char(unit);
    case u'\b':
        return 'b';
    case u'\f':
        return 'f';
    case u'\n':
        return 'n';
    case u'\r':
        return 'r';
    case u'\t':
        return 't';
    default:
        return 0;
    }
}

char *addEscaped(char *to, char16_t unit)
{
    static constexpr char hex[] = "0123456789abcdef";
    *to++ = '\\';
    if (const char letter = shortEscape(unit)) {
        *to++ = letter;
        return to;
    }
    for (const char character : {'u', '0', '0', hex[unit >> 4], hex[unit & 0xF]})
        *to++ = character;
    return to;
}

/// Any unit that is not plain, with the second half of its pair if it has one.
char *addOther(char *to, const char16_t *&unit, const char16_t *end)
{
    const char16_t first = *unit++;
    if (first < 0x80 && first != 0x7F)
        return addEscaped(to, first);
    if (QChar::isHighSurrogate(first) && unit != end && QChar::isLowSurrogate(*unit))
        return addUtf8(to, QChar::surrogateToUcs4(first, *unit++));
    return addUtf8(to, QChar::isSurrogate(first) ? char32_t(QChar::ReplacementCharacter) : first);
}

template <typename Number>
void addNumber(QByteArray &out, Number number)
{
    char digits[std::numeric_limits<Number>::digits10 + 3];
    const char *end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    out.append(digits, end - digits);
}

} // namespace

void JsonWriter::appendQuoted(QByteArray &out, QStringView text)
{
    // Room for the worst, given back at the end: no unit then asks whether there is room.
    const qsizetype start = out.size();
    out.resize(start + text.size() * mostBytesAUnit + 2);
    char *to = out.data() + start;
    *to++ = '"';
    const char16_t *unit = text.utf16();
    const char16_t *const end = unit + text.size();
    while (unit != end) {
        if (isPlain(*unit))
            *to++ = char(*unit++);
        else
            to = addOther(to, unit, end);
    }
    *to++ = '"';
    out.truncate(to - out.constData());
}

JsonWriter JsonWriter::within(QByteArray &out, int depth)
{
    JsonWriter json(out, Style::Pretty);
    json.m_depth = depth;
    json.m_afterKey = true;
    return json;
}

void JsonWriter::open(char bracket)
{
    separate();
    m_out.append(bracket);
    ++m_depth;
    m_first = true;
}

void JsonWriter::close(char bracket)
{
    --m_depth;
    if (!m_first)
        breakLine();
    m_out.append(bracket);
    m_first = false;
}

void JsonWriter::breakLine()
{
    if (m_style == Style::Pretty) {
        m_out.append('\n');
        m_out.append(qsizetype(2) * m_depth, ' ');
    }
}

void JsonWriter::separate()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (!m_first)
        m_out.append(',');
    if (m_depth > 0)
        breakLine();
    m_first = false;
}

void JsonWriter::key(QStringView name)
{
    separate();
    appendQuoted(m_out, name);
    m_out.append(m_style == Style::Pretty ? ": " : ":");
    m_afterKey = true;
}

void JsonWriter::value(QStringView text)
{
    separate();
    appendQuoted(m_out, text);
}

void JsonWriter::value(bool flag)
{
    encoded(flag ? "true" : "false");
}

void JsonWriter::value(qint64 number)
{
    separate();
    addNumber(m_out, number);
}

void JsonWriter::value(quint64 number)
{
    separate();
    addNumber(m_out, number);
}

void JsonWriter::value(double number)
{
    if (!std::isfinite(number))
        null();
    else
        encoded(QByteArray::number(number, 'g', QLocale::FloatingPointShortest));
}

void JsonWriter::null()
{
    encoded("null");
}

void JsonWriter::encoded(QByteArrayView json)
{
    separate();
    m_out.append(json.data(), json.size());
}

} // namespace tarnwick
