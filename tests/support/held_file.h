#pragma once

#include "platform/fault_gate.h"

#include <QSemaphore>
#include <QString>

#include <atomic>

namespace tarnwick::testing {

/// Holds up the first call on a file of this name, made in the background, until it is released:
/// what an unresponsive drive does to it. Meanwhile any other call on files waits too.
class HeldFile
{
public:
    explicit HeldFile(const QString &name)
        : m_faults([this, name](platform::FileOperation, const QString &path) {
            if (path.endsWith(u'/' + name) && !m_done.exchange(true)) {
                m_reached.release();
                m_released.acquire();
            }
            return 0;
        })
    {}
    ~HeldFile() { release(); }

    bool waitUntilReached() { return m_reached.tryAcquire(1, 10000); }
    void release() { m_released.release(); }

private:
    std::atomic<bool> m_done = false;
    QSemaphore m_reached;
    QSemaphore m_released;
    platform::ScopedFaults m_faults;
};

} // namespace tarnwick::testing
