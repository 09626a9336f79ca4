#include "analysis/text_numbering.h"

#include <QHash>

#include <algorithm>
#include <bit>
#include <utility>

namespace tarnwick {

namespace {

constexpr size_t fewestSlots = 16;

quint32 hashOf(QStringView text)
{
    const size_t hash = qHashBits(text.utf16(), size_t(text.size()) * sizeof(char16_t));
    return quint32(hash ^ (hash >> 32));
}

} // namespace

TextNumbering::TextNumbering(size_t expectedTexts)
{
    growTo(std::bit_ceil(std::max(fewestSlots, expectedTexts * 2)));
    m_ends.reserve(expectedTexts);
}

int TextNumbering::numberOf(QStringView text)
{
    const quint32 hash = hashOf(text);
    Slot &slot = m_slots[slotFor(text, hash)];
    if (slot.number >= 0)
        return slot.number;
    const int number = count();
    slot = {hash, number};
    m_texts.append(text.utf16(), size_t(text.size()));
    m_ends.push_back(m_texts.size());
    if (m_ends.size() * 2 > m_slots.size())
        growTo(m_slots.size() * 2);
    return number;
}

int TextNumbering::find(QStringView text) const
{
    return m_slots[slotFor(text, hashOf(text))].number;
}

QStringView TextNumbering::text(int number) const
{
    const size_t start = number == 0 ? 0 : m_ends[size_t(number) - 1];
    return QStringView(m_texts).sliced(qsizetype(start), qsizetype(m_ends[size_t(number)] - start));
}

/// Where the slot is that holds `text`, or the free one where it belongs.
size_t TextNumbering::slotFor(QStringView text, quint32 hash) const
{
    const size_t mask = m_slots.size() - 1;
    for (size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot &slot = m_slots[at];
        if (slot.number < 0 || (slot.hash == hash && this->text(slot.number) == text))
            return at;
    }
}

void TextNumbering::growTo(size_t slotCount)
{
    const std::vector<Slot> former = std::exchange(m_slots, std::vector<Slot>(slotCount));
    const size_t mask = slotCount - 1;
    for (const Slot &slot : former) {
        if (slot.number < 0)
            continue;
        size_t at = slot.hash & mask;
        while (m_slots[at].number >= 0)
            at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}

} // namespace tarnwick
