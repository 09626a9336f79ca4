#pragma once

#include <QFileInfo>

namespace tarnwick::testing {

/// Lets the temporary folders of this process lie in memory, where the system offers that: for
/// tests of what flushes to the device again and again.
inline void keepTemporaryFoldersInMemory()
{
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
        qputenv("TMPDIR", "/dev/shm");
}

} // namespace tarnwick::testing
