#pragma once

#include <QList>
#include <QtGlobal>

#include <iterator>
#include <utility>

namespace tarnwick::demo {

/// A small generator of repeatable numbers. Draw one a statement: operands have no fixed order. Its
/// sequence depends on seed and stream alone, never on the platform, so that one seed stands for
/// one library everywhere. Not for secrets.
class Random
{
public:
    /// Each part of the plan draws from a stream of its own: a change to one leaves the others be.
    explicit Random(quint64 seed, quint64 stream = 0);

    quint64 next();

    /// 0 to bound - 1; the bound must be positive.
    int below(int bound);

    /// low to high, both included.
    int between(int low, int high) { return low + below(high - low + 1); }

    /// True about `chance` times of 1000.
    bool permille(int chance) { return below(1000) < chance; }

    template <typename Table>
    const auto &pick(const Table &table)
    {
        return *std::next(std::begin(table), below(static_cast<int>(std::size(table))));
    }

    template <typename Value>
    void shuffle(QList<Value> &values)
    {
        for (int i = static_cast<int>(values.size()) - 1; i > 0; --i) {
            std::swap(values[i], values[below(i + 1)]);
        }
    }

private:
    quint64 m_state;
};

} // namespace tarnwick::demo
