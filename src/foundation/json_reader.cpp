#include "foundation/json_reader.h"

#include "foundation/json_text.h"
#include "foundation/utf8.h"

namespace tarnwick {

namespace {

/// Deeper nesting than any store has; beyond it the input is an attack on the stack.
constexpr int deepestNesting = 512;

bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
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

bool JsonReader::utf8(QByteArray &out)
{
    skipSpace();
    const auto token = m_failed ? std::nullopt : JsonText::at(m_bytes, m_at);
    if (!token)
        return fail();
    const QByteArrayView encoded = token->encoded;
    m_at += encoded.size() + 2; // the marks around it
    if (!token->hasEscapes) {
        out = QByteArray::fromRawData(encoded.data(), encoded.size());
        return true;
    }
    std::optional<JsonText::Decoded> decoded = JsonText::decode(encoded);
    if (!decoded)
        return fail();
    m_isWrittenForm = m_isWrittenForm && decoded->isWrittenForm;
    out = std::move(decoded->bytes);
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
