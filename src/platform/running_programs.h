#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick::platform {

/// True if a running program's name is exactly one of these, letter case included. Looks at the
/// system at this moment and keeps nothing. False where the list of programs can't be had.
///
/// Linux keeps at most 15 bytes of a program's name, all that is compared there.
bool isAnyProgramRunning(const QStringList &names);

} // namespace tarnwick::platform
