#include "foundation/identity.h"

#include <QRandomGenerator>

#include <atomic>

namespace tarnwick {

QUuid freshIdentity()
{
    static const quint64 start = QRandomGenerator::system()->generate64();
    static std::atomic<quint64> counter{QRandomGenerator::system()->generate64()};
    const quint64 low = counter.fetch_add(1, std::memory_order_relaxed);
    constexpr ushort version = 0x4000;
    constexpr uchar variant = 0x80;
    return QUuid(uint(start >> 32), ushort(start >> 16), ushort((start & 0x0FFF) | version),
                 uchar(((start >> 12) & 0x3F) | variant), uchar(low >> 48), uchar(low >> 40),
                 uchar(low >> 32), uchar(low >> 24), uchar(low >> 16), uchar(low >> 8), uchar(low));
}

} // namespace tarnwick
