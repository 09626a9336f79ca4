#pragma once

#include <QString>

namespace tarnwick::platform {

/// The folder in which this application keeps what is its own: `$XDG_DATA_HOME/Tarnwick`, else
/// `~/.local/share/Tarnwick`; on macOS Application Support. Worked out afresh at each call; makes
/// nothing.
QString dataFolder();

} // namespace tarnwick::platform
