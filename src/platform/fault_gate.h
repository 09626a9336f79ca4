#pragma once

#include <QString>

#include <functional>

namespace tarnwick::platform {

/// What `files` asks of the system, as far as a fault can be told apart.
enum class FileOperation {
    Open,
    Read,
    Write,
    Flush,
    Rename,
    Remove,
    MakeFolder,
    Copy,
    List,
    Stat,
    SetAttributes,
};

/// Asked ahead of each system call of `files` with what is about to be done and to which path.
/// Answers 0 to let it happen, or the errno value with which it fails instead. It may also end the
/// process. For tests.
using FaultHook = std::function<int(FileOperation, const QString &path)>;

/// Sets the hook for the guard's life. Calls that come from several threads are passed on one at a
/// time.
class ScopedFaults
{
public:
    explicit ScopedFaults(FaultHook hook);
    ~ScopedFaults();
    ScopedFaults(const ScopedFaults &) = delete;
    ScopedFaults &operator=(const ScopedFaults &) = delete;
};

/// 0, or the errno value with which the operation must fail. Costs one load where no hook is set.
int faultFor(FileOperation operation, const QString &path);

} // namespace tarnwick::platform
