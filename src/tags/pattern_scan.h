#pragma once

#include <QByteArrayView>

#include <array>
#include <cstdint>

namespace tarnwick {

/// Looks for several byte patterns in one pass that touches only every ninth position.
///
/// 1. Every pattern has at least `windowSize` bytes. The pairs of neighbouring bytes in its first
///    `windowSize` bytes stand in a table. It knows each byte by its low seven bits alone, which
///    keeps the part of it that matters within the nearest cache and lets in few strangers.
/// 2. Only the pairs at multiples of `stride` in the body are looked up. `stride` is the number of
///    pairs in a window, so each occurrence of a pattern holds exactly one of them.
/// 3. A pair that is in the table gives candidates, each compared in full. They come in ascending
///    order of their start, so the first that holds is the first occurrence.
class PatternScan
{
public:
    static constexpr qsizetype windowSize = 10;
    static constexpr qsizetype stride = windowSize - 1;
    static constexpr qsizetype patternCount = 5;
    static constexpr qsizetype notFound = -1;

    using Patterns = std::array<QByteArrayView, patternCount>;
    using Offsets = std::array<qsizetype, patternCount>;

    /// The patterns' bytes must outlive the scan; each has at least `windowSize` of them.
    constexpr explicit PatternScan(const Patterns &patterns)
        : m_patterns(patterns)
    {
        for (size_t pattern = 0; pattern < patterns.size(); ++pattern) {
            for (qsizetype back = 0; back < stride; ++back)
                addCandidate(pattern, back);
        }
    }

    /// Where each pattern first occurs in the body, or `notFound`, in the patterns' order.
    Offsets firstOffsets(QByteArrayView body) const;

private:
    /// A place in a pattern at which a sampled pair may stand. Those of one slot form a chain.
    struct Candidate
    {
        std::uint8_t pattern = 0;
        std::uint8_t back = 0; ///< from the pair to the pattern's start
        std::uint8_t next = 0; ///< as in `m_heads`
    };

    static constexpr size_t lowBits = 0x7F7F;

    static constexpr size_t slotOf(const char *pair)
    {
        const unsigned first = uchar(pair[0]);
        const unsigned second = uchar(pair[1]);
        return (first | second << 8) & lowBits;
    }

    /// Goes to the head of its chain, so that the farthest start comes first.
    constexpr void addCandidate(size_t pattern, qsizetype back)
    {
        const size_t number = pattern * stride + size_t(back) + 1;
        std::uint8_t &head = m_heads[slotOf(m_patterns[pattern].data() + back)];
        m_candidates[number] = {std::uint8_t(pattern), std::uint8_t(back), head};
        head = std::uint8_t(number);
    }

    void verifyAround(QByteArrayView body, qsizetype sample, Offsets &found) const;

    Patterns m_patterns;
    std::array<std::uint8_t, lowBits + 1> m_heads{}; ///< by slot: a candidate's number, 0 for none
    std::array<Candidate, patternCount * stride + 1> m_candidates{}; ///< by number, from 1
};

} // namespace tarnwick
