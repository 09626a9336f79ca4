#include "export/export_util.h"

#include "foundation/numbers.h"

#include <QStringDecoder>

#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>

using namespace Qt::StringLiterals;

namespace tarnwick::ExportUtil {

namespace {

constexpr std::string_view host = "file://localhost";
constexpr std::string_view keptInUrls =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
constexpr std::string_view upperDigits = "0123456789ABCDEF";

constexpr qsizetype longestEntity = 6; // "&quot;"; longer than the UTF-8 of any code unit
constexpr qsizetype longestEscape = 3; // "%2F"

constexpr std::array<std::string_view, 128> entities = [] {
    std::array<std::string_view, 128> texts{};
    texts['&'] = "&amp;";
    texts['<'] = "&lt;";
    texts['>'] = "&gt;";
    texts['"'] = "&quot;";
    texts['\''] = "&apos;";
    return texts;
}();

constexpr std::array<bool, 256> isKeptInUrls = [] {
    std::array<bool, 256> kept{};
    for (const char character : keptInUrls)
        kept[size_t(character)] = true;
    return kept;
}();

char *put(char *to, std::string_view text)
{
    std::memcpy(to, text.data(), text.size());
    return to + text.size();
}

char *putAscii(char *to, char16_t unit)
{
    const std::string_view entity = entities[unit];
    if (!entity.empty())
        return put(to, entity);
    *to++ = char(unit);
    return to;
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

/// The character at a place; `index` comes to stand on its last code unit.
char32_t scalarAt(QStringView text, qsizetype &index)
{
    const QChar unit = text[index];
    if (!unit.isSurrogate())
        return unit.unicode();
    if (unit.isLowSurrogate() || index + 1 == text.size() || !text[index + 1].isLowSurrogate())
        return QChar::ReplacementCharacter;
    return QChar::surrogateToUcs4(unit, text[++index]);
}

int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

std::optional<QByteArray> withoutEscapes(QByteArrayView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes.append(text[i]);
            continue;
        }
        if (text.size() - i < longestEscape)
            return std::nullopt;
        const int high = digitValue(text[i + 1]);
        const int low = digitValue(text[i + 2]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes.append(char(high << 4 | low));
        i += 2;
    }
    return bytes;
}

std::optional<QString> decoded(QByteArrayView utf8)
{
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    QString text = decoder(utf8);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

} // namespace

QString xml(QStringView text)
{
    QByteArray out;
    appendXml(out, text);
    return QString::fromUtf8(out);
}

QString fileUrl(QStringView path)
{
    QByteArray out;
    appendFileUrl(out, path);
    return QString::fromLatin1(out);
}

// The arithmetic is unsigned, since a length may state any 64-bit number: sums wrap.
qint64 seconds(QStringView lengthText)
{
    constexpr int mostNumbers = 3;
    quint64 sum = 0;
    int count = 0;
    for (const QStringView piece : lengthText.tokenize(u':', Qt::SkipEmptyParts)) {
        const std::optional<qint64> number = parseWhole(piece);
        if (!number)
            continue;
        sum = sum * 60 + quint64(*number);
        ++count;
    }
    return count == 2 || count == mostNumbers ? qint64(sum) : 0;
}

QString withoutPercentEncoding(QByteArrayView text)
{
    const std::optional<QByteArray> bytes = withoutEscapes(text);
    const std::optional<QString> path = bytes ? decoded(*bytes) : std::nullopt;
    return path ? *path : QString::fromUtf8(text);
}

void appendXml(QByteArray &out, QStringView text)
{
    const qsizetype start = out.size();
    out.resize(start + text.size() * longestEntity);
    char *to = out.data() + start;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        to = unit < 0x80 ? putAscii(to, unit) : putUtf8(to, scalarAt(text, i));
    }
    out.truncate(to - out.constData());
}

void appendFileUrl(QByteArray &out, QStringView path)
{
    const QByteArray utf8 = path.toUtf8();
    const qsizetype start = out.size();
    out.resize(start + qsizetype(host.size()) + utf8.size() * longestEscape);
    char *to = put(out.data() + start, host);
    for (const char byte : utf8) {
        const auto code = uchar(byte);
        if (isKeptInUrls[code]) {
            *to++ = byte;
            continue;
        }
        *to++ = '%';
        *to++ = upperDigits[code >> 4];
        *to++ = upperDigits[code & 15];
    }
    out.truncate(to - out.constData());
}

void appendNumber(QByteArray &out, qint64 number)
{
    char digits[24];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), number);
    out.append(digits, end - digits);
}

void appendTwoDecimals(QByteArray &out, double number)
{
    char digits[352]; // the largest double has 309 digits ahead of its point
    const auto [end, error] =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed, 2);
    out.append(digits, end - digits);
}

} // namespace tarnwick::ExportUtil
