#include "foundation/utf16.h"

#include <QtEndian>

namespace tarnwick {

namespace {

/// Puts U+FFFD in the place of every surrogate that has no partner.
void repairSurrogates(QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        if (!unit.isSurrogate())
            continue;
        if (unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
}

} // namespace

QString decodeUtf16BigEndian(QByteArrayView bytes)
{
    const qsizetype units = bytes.size() / 2;
    if (units == 0)
        return {};
    QString text(units, Qt::Uninitialized);
    auto *out = reinterpret_cast<char16_t *>(text.data());
    qFromBigEndian<char16_t>(bytes.data(), units, out);
    bool surrogates = false;
    for (qsizetype i = 0; i < units; ++i)
        surrogates |= (out[i] & 0xF800) == 0xD800;
    if (surrogates)
        repairSurrogates(text);
    return text;
}

QByteArray encodeUtf16BigEndian(QStringView text)
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    qToBigEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    return bytes;
}

} // namespace tarnwick
