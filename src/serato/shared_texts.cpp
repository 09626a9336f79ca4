#include "serato/shared_texts.h"

#include "foundation/utf16.h"

#include <QHash>

#include <cstring>

namespace tarnwick {

namespace {

constexpr size_t slotCount = 16384; // a power of two

bool equal(QByteArrayView a, QByteArrayView b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), size_t(a.size())) == 0;
}

} // namespace

SharedTexts::SharedTexts()
    : m_slots(slotCount)
{}

QString SharedTexts::text(QByteArrayView payload)
{
    if (payload.size() < 2)
        return {};
    const size_t hash = qHashBits(payload.data(), size_t(payload.size()));
    Slot &slot = m_slots[hash & (slotCount - 1)];
    if (!equal(slot.payload, payload))
        slot = {payload, decodeUtf16BigEndian(payload)};
    return slot.text;
}

} // namespace tarnwick
