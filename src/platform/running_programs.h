#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick::platform {

/// True if a running program's name is exactly one of these, letter case included. Looks at the
/// system at this moment and keeps nothing. False where the list of programs can't be had. No
/// program has an empty name.
///
/// Linux keeps at most 15 bytes of a program's name, all that is compared there.
bool isAnyProgramRunning(const QStringList &names);

/// Counts only programs that this process has started, for the guard's life: what else runs on the
/// machine doesn't matter. For tests.
class ScopedOwnPrograms
{
public:
    ScopedOwnPrograms();
    ~ScopedOwnPrograms();
    ScopedOwnPrograms(const ScopedOwnPrograms &) = delete;
    ScopedOwnPrograms &operator=(const ScopedOwnPrograms &) = delete;
};

} // namespace tarnwick::platform
