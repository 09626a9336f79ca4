#pragma once

#include "analysis/text_numbering.h"
#include "serato/loaded_crate.h"

#include <QList>

#include <span>
#include <vector>

namespace tarnwick {

/// The paths of all crates, each text looked at once: from there on paths and crates are numbers.
class CratePaths
{
public:
    /// How many paths two crates have in common.
    struct Shared
    {
        int a; ///< place of the earlier crate
        int b; ///< place of the later crate
        int count;
    };

    explicit CratePaths(const QList<LoadedCrate> &crates);

    /// True if some crate lists exactly this path.
    bool contains(QStringView path) const { return m_paths.find(path) >= 0; }

    /// The pairs of crates with a path in common, ordered by a, then b. A path that a crate repeats
    /// counts once.
    std::vector<Shared> sharedByPair() const;

private:
    int crateCount() const { return int(m_ends.size()); }
    std::span<const int> pathsOf(int crate) const;

    TextNumbering m_paths;
    std::vector<int> m_numbers; ///< the distinct paths of each crate, one crate behind the other
    std::vector<size_t> m_ends; ///< where each crate ends in m_numbers
};

} // namespace tarnwick
