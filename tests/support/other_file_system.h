#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

#include <sys/stat.h>

namespace tarnwick::testing {

inline dev_t fileSystemOf(const QString &path)
{
    struct stat status;
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_dev : 0;
}

/// Makes the path a link to a new, empty folder on another file system than that of its parent, so
/// that what is moved into it crosses the border. The folder lives until the next call but one.
/// False where this machine has no second file system to write to.
inline bool linkToOtherFileSystem(const QString &path)
{
    static std::unique_ptr<QTemporaryDir> kept[2];
    const dev_t own = fileSystemOf(QFileInfo(path).path());
    for (const QString &place : {QStringLiteral("/dev/shm"), QDir::tempPath()}) {
        if (fileSystemOf(place) == own)
            continue;
        kept[0] = std::move(kept[1]);
        kept[1] = std::make_unique<QTemporaryDir>(place + QStringLiteral("/tarnwick-XXXXXX"));
        return kept[1]->isValid() && QFile::link(kept[1]->path(), path);
    }
    return false;
}

} // namespace tarnwick::testing
