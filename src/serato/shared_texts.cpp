#include "serato/shared_texts.h"

#include "foundation/utf16.h"

#include <QHash>
#include <QtEndian>

namespace tarnwick {

namespace {

constexpr size_t placeCount = 4096; // a power of two

/// True if the payload decodes to the text without a repair.
bool spells(QByteArrayView payload, const QString &text)
{
    if (payload.size() / 2 != text.size())
        return false;
    const ushort *units = text.utf16();
    int difference = 0;
    for (qsizetype i = 0; i < text.size(); ++i)
        difference |= qFromBigEndian<ushort>(payload.data() + 2 * i) ^ units[i];
    return difference == 0;
}

} // namespace

SharedTexts::SharedTexts()
    : m_places(placeCount)
{}

const QString &SharedTexts::text(QByteArrayView payload)
{
    const size_t hash = qHashBits(payload.data(), size_t(payload.size()));
    QString &text = m_places[hash & (placeCount - 1)];
    if (!spells(payload, text))
        text = decodeUtf16BigEndian(payload);
    return text;
}

} // namespace tarnwick
