#include "foundation/identity.h"

#include <QRandomGenerator>
#include <QtEndian>

#include <atomic>

namespace tarnwick {

namespace {

/// An identity whose last bytes stand for a count.
QUuid randomStart()
{
    constexpr ushort version = 0x4000;
    constexpr uchar variant = 0x80;
    const quint64 start = QRandomGenerator::system()->generate64();
    return QUuid(uint(start >> 32), ushort(start >> 16), ushort((start & 0x0FFF) | version),
                 uchar(((start >> 12) & 0x3F) | variant), 0, 0, 0, 0, 0, 0, 0);
}

/// The next of the process-wide count. Each thread takes a stretch of it at a time: going to memory
/// that all threads share would cost more than the rest of an identity.
quint64 nextCount()
{
    constexpr quint64 stretch = 1024;
    static std::atomic<quint64> shared{QRandomGenerator::system()->generate64()};
    thread_local quint64 next = 0;
    thread_local quint64 left = 0;
    if (left == 0) {
        next = shared.fetch_add(stretch, std::memory_order_relaxed);
        left = stretch;
    }
    --left;
    return next++;
}

} // namespace

QUuid freshIdentity()
{
    static const QUuid start = randomStart();
    constexpr quint64 countBits = (Q_UINT64_C(1) << 56) - 1;
    QUuid identity = start;
    qToBigEndian(quint64(start.data4[0]) << 56 | (nextCount() & countBits), identity.data4);
    return identity;
}

} // namespace tarnwick
