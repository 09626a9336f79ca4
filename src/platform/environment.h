#pragma once

#include <QString>

#include <optional>

namespace tarnwick::platform {

/// A variable of the process environment as it stands at this moment; nothing if it is not set.
std::optional<QString> environmentVariable(const char *name);

/// The current user's home folder: `HOME`, else what the system's user database says. No slash at
/// the end.
QString homeFolder();

} // namespace tarnwick::platform
