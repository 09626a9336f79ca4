#pragma once

#include <QHash>

#include <bit>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::bench {

/// The least that numbers texts: one hash of each, looked up in one flat table. A hash of 64 bits
/// stands for its text, which no program that has to be right could do. Never grows.
class FlatTable
{
public:
    explicit FlatTable(size_t texts)
        : m_slots(std::bit_ceil(texts + texts / 2 + 1))
    {}

    int number(std::u16string_view text)
    {
        const size_t hash = qHashBits(text.data(), text.size() * sizeof(char16_t));
        size_t at = hash & (m_slots.size() - 1);
        while (m_slots[at].number >= 0 && m_slots[at].hash != hash)
            at = (at + 1) & (m_slots.size() - 1);
        if (m_slots[at].number < 0)
            m_slots[at] = {hash, m_count++};
        return m_slots[at].number;
    }

    int count() const { return m_count; }

private:
    struct Slot
    {
        size_t hash = 0;
        int number = -1;
    };

    std::vector<Slot> m_slots;
    int m_count = 0;
};

/// Appends `text` with the capitals of ASCII in lower case.
inline void appendFolded(std::u16string &texts, QStringView text)
{
    const size_t start = texts.size();
    texts.resize(start + size_t(text.size()));
    const char16_t *in = text.utf16();
    char16_t *out = texts.data() + start;
    for (qsizetype i = 0; i < text.size(); ++i)
        out[i] = char16_t(in[i] + (char16_t(in[i] - u'A') < 26 ? 0x20 : 0));
}

} // namespace tarnwick::bench
