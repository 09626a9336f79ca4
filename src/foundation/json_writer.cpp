#include "foundation/json_writer.h"

#include <QLocale>

#include <cmath>

namespace tarnwick {

namespace {

void appendUtf8(QByteArray &out, char32_t scalar)
{
    if (scalar < 0x80) {
        out.append(char(scalar));
    } else if (scalar < 0x800) {
        out.append(char(0xC0 | (scalar >> 6)));
        out.append(char(0x80 | (scalar & 0x3F)));
    } else if (scalar < 0x10000) {
        out.append(char(0xE0 | (scalar >> 12)));
        out.append(char(0x80 | ((scalar >> 6) & 0x3F)));
        out.append(char(0x80 | (scalar & 0x3F)));
    } else {
        out.append(char(0xF0 | (scalar >> 18)));
        out.append(char(0x80 | ((scalar >> 12) & 0x3F)));
        out.append(char(0x80 | ((scalar >> 6) & 0x3F)));
        out.append(char(0x80 | (scalar & 0x3F)));
    }
}

bool isPlain(char16_t unit)
{
    return unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\';
}

void appendEscaped(QByteArray &out, char16_t unit)
{
    static constexpr char hex[] = "0123456789abcdef";
    switch (unit) {
    case u'"':
        out.append("\\\"");
        return;
    case u'\\':
        out.append("\\\\");
        return;
    case u'\b':
        out.append("\\b");
        return;
    case u'\f':
        out.append("\\f");
        return;
    case u'\n':
        out.append("\\n");
        return;
    case u'\r':
        out.append("\\r");
        return;
    case u'\t':
        out.append("\\t");
        return;
    default:
        out.append("\\u00");
        out.append(hex[unit >> 4]);
        out.append(hex[unit & 0xF]);
    }
}

} // namespace

namespace {

/// How many code units from `from` on need no escape and are ASCII.
qsizetype plainRun(QStringView text, qsizetype from)
{
    qsizetype end = from;
    while (end < text.size() && isPlain(text[end].unicode()))
        ++end;
    return end - from;
}

void appendAscii(QByteArray &out, QStringView text)
{
    const qsizetype start = out.size();
    out.resize(start + text.size());
    char *to = out.data() + start;
    for (const QChar character : text)
        *to++ = char(character.unicode());
}

} // namespace

void JsonWriter::appendQuoted(QByteArray &out, QStringView text)
{
    out.append('"');
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (const qsizetype run = plainRun(text, i); run > 0) {
            appendAscii(out, text.sliced(i, run));
            i += run - 1;
            continue;
        }
        const char16_t unit = text[i].unicode();
        if (unit < 0x80 && unit != 0x7F)
            appendEscaped(out, unit);
        else if (QChar::isHighSurrogate(unit) && i + 1 < text.size() &&
                 text[i + 1].isLowSurrogate())
            appendUtf8(out, QChar::surrogateToUcs4(unit, text[++i].unicode()));
        else
            appendUtf8(out,
                       QChar::isSurrogate(unit) ? char32_t(QChar::ReplacementCharacter) : unit);
    }
    out.append('"');
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
    encoded(QByteArray::number(number));
}

void JsonWriter::value(quint64 number)
{
    encoded(QByteArray::number(number));
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
