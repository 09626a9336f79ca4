#pragma once

#include <QStringView>

#include <string>
#include <vector>

namespace tarnwick {

/// Numbers texts 0, 1, 2 and so on in the order in which they are first met; equal texts share a
/// number. Equality is exact, code unit by code unit. Made for one pass over a whole library: the
/// table is flat, and the texts lie one behind the other in one buffer.
class TextNumbering
{
public:
    explicit TextNumbering(size_t expectedTexts = 0);

    /// The number of `text`: the next free one where it is new.
    int numberOf(QStringView text);

    /// The number of `text`; -1 if it was never numbered.
    int find(QStringView text) const;

    /// The text behind a number. Valid until the next call of numberOf().
    QStringView text(int number) const;

    /// How many texts have a number.
    int count() const { return int(m_ends.size()); }

private:
    struct Slot
    {
        quint32 hash = 0;
        int number = -1; ///< -1 while the slot is free
    };

    size_t slotFor(QStringView text, quint32 hash) const;
    void growTo(size_t slotCount);

    std::vector<Slot> m_slots; ///< a power of two, at most half of them taken
    std::u16string m_texts;
    std::vector<size_t> m_ends; ///< where each text ends in m_texts
};

} // namespace tarnwick
