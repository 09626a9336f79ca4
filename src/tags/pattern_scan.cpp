#include "tags/pattern_scan.h"

#include <cstring>

namespace tarnwick {

void PatternScan::verifyAround(QByteArrayView body, qsizetype sample, Offsets &found) const
{
    const unsigned pair = pairAt(body.data() + sample);
    for (size_t index = 0; index < m_patterns.size(); ++index) {
        const QByteArrayView pattern = m_patterns[index];
        for (qsizetype back = stride - 1; found[index] == notFound && back >= 0; --back) {
            const qsizetype start = sample - back;
            if (pairAt(pattern.data() + back) != pair || start < 0)
                continue;
            if (pattern.size() <= body.size() - start &&
                std::memcmp(body.data() + start, pattern.data(), size_t(pattern.size())) == 0)
                found[index] = start;
        }
    }
}

PatternScan::Offsets PatternScan::firstOffsets(QByteArrayView body) const
{
    constexpr qsizetype samplesAtOnce = 8;
    Offsets found;
    found.fill(notFound);
    const char *bytes = body.data();
    const qsizetype pairs = body.size() - 1;
    qsizetype at = 0;
    // Hits are rare: eight samples share one branch.
    for (; at + stride * (samplesAtOnce - 1) < pairs; at += stride * samplesAtOnce) {
        std::uint32_t any = 0;
        for (qsizetype sample = 0; sample < samplesAtOnce; ++sample)
            any |= knows(bytes + at + sample * stride);
        if (any == 0) [[likely]]
            continue;
        for (qsizetype sample = 0; sample < samplesAtOnce; ++sample) {
            if (knows(bytes + at + sample * stride))
                verifyAround(body, at + sample * stride, found);
        }
    }
    for (; at < pairs; at += stride) {
        if (knows(bytes + at))
            verifyAround(body, at, found);
    }
    return found;
}

} // namespace tarnwick
