#include "export/export_util.h"

#include "export/utf8_text.h"
#include "foundation/numbers.h"
#include "foundation/utf8.h"

#include <QStringDecoder>

#include <optional>

namespace tarnwick::ExportUtil {

namespace {

constexpr QByteArrayView host = "file://localhost";
constexpr qsizetype escapeSize = 3; // "%2F"

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
        if (text.size() - i < escapeSize)
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
    Utf8Text out;
    out.addXml(text);
    return decodeUtf8(out.view());
}

QString fileUrl(QStringView path)
{
    Utf8Text out;
    addFileUrl(out, path);
    return QString::fromLatin1(out.view());
}

void addFileUrl(Utf8Text &out, QStringView path)
{
    out.add(host);
    out.addPercentEncoded(path);
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
    return path ? *path : decodeUtf8(text);
}

} // namespace tarnwick::ExportUtil
