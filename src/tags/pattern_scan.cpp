#include "tags/pattern_scan.h"

namespace tarnwick {

void PatternScan::verifyAround(QByteArrayView body, qsizetype sample, Offsets &found) const
{
    unsigned number = m_heads[slotOf(body.data() + sample)];
    while (number != 0) {
        const Candidate &candidate = m_candidates[number];
        number = candidate.next;
        const qsizetype start = sample - candidate.back;
        if (start < 0 || found[candidate.pattern] != notFound)
            continue;
        if (body.sliced(start).startsWith(m_patterns[candidate.pattern]))
            found[candidate.pattern] = start;
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
        unsigned any = 0;
        for (qsizetype sample = 0; sample < samplesAtOnce; ++sample)
            any |= m_heads[slotOf(bytes + at + sample * stride)];
        if (any == 0) [[likely]]
            continue;
        for (qsizetype sample = 0; sample < samplesAtOnce; ++sample) {
            if (m_heads[slotOf(bytes + at + sample * stride)])
                verifyAround(body, at + sample * stride, found);
        }
    }
    for (; at < pairs; at += stride) {
        if (m_heads[slotOf(bytes + at)])
            verifyAround(body, at, found);
    }
    return found;
}

} // namespace tarnwick
