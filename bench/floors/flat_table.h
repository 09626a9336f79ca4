#pragma once

#include <QHash>

#include <bit>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::bench {

/// The least that numbers texts: they lie one behind the other in one buffer, and a slot of one
/// flat table says where. Never grows.
class FlatTable
{
public:
    explicit FlatTable(size_t texts)
        : m_slots(std::bit_ceil(texts * 2 + 1))
    {}

    /// The buffer to append a text to, ahead of number().
    std::u16string &text() { return m_texts; }

    /// The number of what was appended since the last call. Gives its room back if it isn't new.
    int number()
    {
        const std::u16string_view key = std::u16string_view(m_texts).substr(m_end);
        const size_t hash = qHashBits(key.data(), key.size() * sizeof(char16_t));
        size_t at = hash & (m_slots.size() - 1);
        while (m_slots[at].number >= 0 &&
               (m_slots[at].hash != hash ||
                std::u16string_view(m_texts).substr(m_slots[at].start, m_slots[at].length) != key))
            at = (at + 1) & (m_slots.size() - 1);
        if (m_slots[at].number < 0) {
            m_slots[at] = {hash, m_end, key.size(), m_count++};
            m_end = m_texts.size();
        } else {
            m_texts.resize(m_end);
        }
        return m_slots[at].number;
    }

    int count() const { return m_count; }

private:
    struct Slot
    {
        size_t hash = 0;
        size_t start = 0;
        size_t length = 0;
        int number = -1;
    };

    std::vector<Slot> m_slots;
    std::u16string m_texts;
    size_t m_end = 0;
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
