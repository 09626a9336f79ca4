#pragma once

#include <QByteArray>

namespace tarnwick::platform {

/// A file, a link, or a folder with all below it; links are not followed. Stops at the first
/// failure. Answers 0 or an errno value; ENOENT where nothing stands.
int removeWhole(const QByteArray &path);

} // namespace tarnwick::platform
