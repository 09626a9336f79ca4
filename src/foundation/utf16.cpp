#include "foundation/utf16.h"

#include <QtEndian>

namespace tarnwick {

namespace {

/// Puts U+FFFD in the place of every surrogate that has no partner.
void repairSurrogates(char16_t *text, qsizetype units)
{
    for (qsizetype i = 0; i < units; ++i) {
        if (!QChar::isSurrogate(text[i]))
            continue;
        if (QChar::isHighSurrogate(text[i]) && i + 1 < units && QChar::isLowSurrogate(text[i + 1]))
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
}

constexpr qsizetype unitsOfWord = sizeof(quint64) / sizeof(char16_t);

constexpr quint64 inEachUnit(quint64 bits)
{
    return bits * 0x0001000100010001;
}

quint64 withBytesSwapped(quint64 word)
{
    constexpr quint64 lowBytes = inEachUnit(0x00FF);
    return (word & lowBytes) << 8 | (word >> 8 & lowBytes);
}

/// Decodes the units of one word; not 0 if there is a surrogate among them.
quint64 decodeWord(const char *in, char16_t *out)
{
    const quint64 raw = qFromUnaligned<quint64>(in);
    const quint64 word = Q_BYTE_ORDER == Q_BIG_ENDIAN ? raw : withBytesSwapped(raw);
    qToUnaligned(word, out);
    const quint64 zeroForSurrogates = (word & inEachUnit(0xF800)) ^ inEachUnit(0xD800);
    return (zeroForSurrogates - inEachUnit(1)) & ~zeroForSurrogates & inEachUnit(0x8000);
}

} // namespace

void decodeUtf16BigEndian(QByteArrayView bytes, char16_t *out)
{
    const qsizetype units = bytes.size() / 2;
    const char *in = bytes.data();
    quint64 surrogates = 0;
    if (units < unitsOfWord) {
        for (qsizetype i = 0; i < units; ++i) {
            out[i] = qFromBigEndian<char16_t>(in + 2 * i);
            surrogates |= QChar::isSurrogate(out[i]) ? 1 : 0;
        }
    } else {
        const qsizetype last = units - unitsOfWord; // overlaps the word ahead of it
        for (qsizetype i = 0; i < last; i += unitsOfWord)
            surrogates |= decodeWord(in + 2 * i, out + i);
        surrogates |= decodeWord(in + 2 * last, out + last);
    }
    if (surrogates != 0)
        repairSurrogates(out, units);
}

QString decodeUtf16BigEndian(QByteArrayView bytes)
{
    if (bytes.size() < 2)
        return {};
    QString text(bytes.size() / 2, Qt::Uninitialized);
    decodeUtf16BigEndian(bytes, reinterpret_cast<char16_t *>(text.data()));
    return text;
}

QByteArray encodeUtf16BigEndian(QStringView text)
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    qToBigEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    return bytes;
}

} // namespace tarnwick
