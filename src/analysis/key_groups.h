#pragma once

#include "analysis/text_numbering.h"

#include <span>

namespace tarnwick {

/// Gathers entries under text keys and gives back those that share a key with another.
class KeyGroups
{
public:
    /// Entries of one key.
    struct Group
    {
        QStringView key;              ///< valid as long as the KeyGroups
        std::span<const int> entries; ///< in the order added, at least two; valid likewise
    };

    explicit KeyGroups(size_t expectedEntries = 0);

    void add(QStringView key, int entry);

    /// The groups of two entries and more, in the order in which their keys were first met. To be
    /// called once, when all is added.
    std::vector<Group> groups();

private:
    struct Entry
    {
        int key;
        int entry;
    };

    TextNumbering m_keys;
    std::vector<Entry> m_entries;
    std::vector<int> m_sizes;  ///< entries of each key
    std::vector<int> m_sorted; ///< what the spans of groups() look at
};

} // namespace tarnwick
