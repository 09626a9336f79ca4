#pragma once

#include <QByteArrayView>

#include <array>
#include <cstdint>

namespace tarnwick {

/// Looks for several byte patterns in one pass that touches only every ninth position.
///
/// 1. Every pattern has at least `windowSize` bytes. The pairs of neighbouring bytes in its first
///    `windowSize` bytes stand in a table of bits.
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
        for (const QByteArrayView pattern : patterns) {
            for (qsizetype at = 0; at < stride; ++at) {
                const unsigned pair = pairAt(pattern.data() + at);
                m_table[pair / bitsPerWord] |= bitOf(pair);
            }
        }
    }

    /// Where each pattern first occurs in the body, or `notFound`, in the patterns' order.
    Offsets firstOffsets(QByteArrayView body) const;

private:
    static constexpr unsigned bitsPerWord = 32;
    static constexpr unsigned pairValues = 65536;

    static constexpr unsigned pairAt(const char *bytes)
    {
        return unsigned(uchar(bytes[0])) | unsigned(uchar(bytes[1])) << 8;
    }
    static constexpr std::uint32_t bitOf(unsigned pair) { return 1u << (pair % bitsPerWord); }

    std::uint32_t knows(const char *bytes) const
    {
        const unsigned pair = pairAt(bytes);
        return m_table[pair / bitsPerWord] & bitOf(pair);
    }
    void verifyAround(QByteArrayView body, qsizetype sample, Offsets &found) const;

    Patterns m_patterns;
    std::array<std::uint32_t, pairValues / bitsPerWord> m_table{};
};

} // namespace tarnwick
