#include "platform/fault_gate.h"

#include <atomic>
#include <mutex>

namespace tarnwick::platform {

namespace {

std::atomic<bool> armed{false};
std::mutex hookMutex;
FaultHook hook;

} // namespace

ScopedFaults::ScopedFaults(FaultHook wanted)
{
    const std::scoped_lock lock(hookMutex);
    hook = std::move(wanted);
    armed = true;
}

ScopedFaults::~ScopedFaults()
{
    const std::scoped_lock lock(hookMutex);
    armed = false;
    hook = nullptr;
}

int faultFor(FileOperation operation, const QString &path)
{
    if (!armed.load(std::memory_order_relaxed)) [[likely]]
        return 0;
    const std::scoped_lock lock(hookMutex);
    return hook ? hook(operation, path) : 0;
}

} // namespace tarnwick::platform
