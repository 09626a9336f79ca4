#include "analysis/crate_paths.h"

#include <utility>

namespace tarnwick {

namespace {

/// For each path the crates that hold it, in order. A crate that has been looked at is dropped from
/// the front, so that a pair is met from its earlier crate alone.
class LaterCrates
{
public:
    LaterCrates(int pathCount, size_t entryCount)
        : m_next(size_t(pathCount) + 1)
        , m_crates(entryCount)
    {}

    void count(int path) { ++m_next[size_t(path) + 1]; }

    void allCounted()
    {
        for (size_t path = 1; path < m_next.size(); ++path)
            m_next[path] += m_next[path - 1];
        m_ends = m_next;
    }

    void add(int path, int crate) { m_crates[m_ends[size_t(path)]++] = crate; }

    std::span<const int> withoutFirst(int path)
    {
        const size_t start = ++m_next[size_t(path)];
        return {m_crates.data() + start, m_ends[size_t(path)] - start};
    }

private:
    std::vector<size_t> m_next; ///< of each path, where its crates begin in m_crates
    std::vector<size_t> m_ends;
    std::vector<int> m_crates;
};

} // namespace

CratePaths::CratePaths(const QList<LoadedCrate> &crates)
{
    std::vector<int> lastCrate; // of each path, the last crate that was seen to hold it
    for (int crate = 0; crate < crates.size(); ++crate) {
        for (const QString &path : crates[crate].paths) {
            const int number = m_paths.numberOf(path);
            if (size_t(number) == lastCrate.size())
                lastCrate.push_back(-1);
            if (std::exchange(lastCrate[size_t(number)], crate) != crate)
                m_numbers.push_back(number);
        }
        m_ends.push_back(m_numbers.size());
    }
}

std::span<const int> CratePaths::pathsOf(int crate) const
{
    const size_t start = crate == 0 ? 0 : m_ends[size_t(crate) - 1];
    return {m_numbers.data() + start, m_ends[size_t(crate)] - start};
}

std::vector<CratePaths::Shared> CratePaths::sharedByPair() const
{
    LaterCrates laterCrates(m_paths.count(), m_numbers.size());
    for (const int path : m_numbers)
        laterCrates.count(path);
    laterCrates.allCounted();
    for (int crate = 0; crate < crateCount(); ++crate) {
        for (const int path : pathsOf(crate))
            laterCrates.add(path, crate);
    }
    std::vector<Shared> pairs;
    std::vector<int> shared(m_ends.size()); // with the crate looked at
    for (int a = 0; a < crateCount(); ++a) {
        for (const int path : pathsOf(a)) {
            for (const int later : laterCrates.withoutFirst(path))
                ++shared[size_t(later)];
        }
        for (int b = a + 1; b < crateCount(); ++b) {
            if (const int count = std::exchange(shared[size_t(b)], 0); count > 0)
                pairs.push_back({a, b, count});
        }
    }
    return pairs;
}

} // namespace tarnwick
