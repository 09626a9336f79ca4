#include "analysis/key_groups.h"

namespace tarnwick {

KeyGroups::KeyGroups(size_t expectedEntries)
    : m_keys(expectedEntries)
{
    m_entries.reserve(expectedEntries);
    m_sizes.reserve(expectedEntries);
}

void KeyGroups::add(QStringView key, int entry)
{
    const int number = m_keys.numberOf(key);
    if (number == int(m_sizes.size()))
        m_sizes.push_back(0);
    ++m_sizes[size_t(number)];
    m_entries.push_back({number, entry});
}

std::vector<KeyGroups::Group> KeyGroups::groups()
{
    constexpr int alone = -1;
    std::vector<int> next(m_sizes.size(), alone); // where the key's next entry goes in m_sorted
    int places = 0;
    for (size_t key = 0; key < m_sizes.size(); ++key) {
        if (m_sizes[key] < 2)
            continue;
        next[key] = places;
        places += m_sizes[key];
    }
    m_sorted.resize(size_t(places));
    for (const Entry &entry : m_entries) {
        if (int &place = next[size_t(entry.key)]; place != alone)
            m_sorted[size_t(place++)] = entry.entry;
    }
    std::vector<Group> groups;
    for (size_t key = 0; key < m_sizes.size(); ++key) {
        if (next[key] == alone)
            continue;
        const size_t size = size_t(m_sizes[key]);
        groups.push_back({m_keys.text(int(key)), {m_sorted.data() + next[key] - size, size}});
    }
    return groups;
}

} // namespace tarnwick
