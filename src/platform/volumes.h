#pragma once

#include <QList>
#include <QString>

namespace tarnwick::platform {

/// An entry of one of the folders in which the system mounts drives.
struct Volume
{
    QString name; ///< the entry's own name
    QString path; ///< absolute

    bool operator==(const Volume &) const = default;
};

/// The entries of `/Volumes` on every system, then on Linux those of `/media/$USER`,
/// `/run/media/$USER` and `/mnt`; a folder that can't be listed, or not within a second, adds
/// nothing. Name order within each folder.
QList<Volume> volumes();

/// The volume below which a path lies; nothing for one on the system disk.
QString volumeNameOf(const QString &path);

/// What the disk that holds the home folder is called.
QString systemDiskName();

/// Looks for volumes in these folders instead, for the guard's life. For tests.
class ScopedVolumeFolders
{
public:
    explicit ScopedVolumeFolders(const QStringList &folders);
    ~ScopedVolumeFolders();
    ScopedVolumeFolders(const ScopedVolumeFolders &) = delete;
    ScopedVolumeFolders &operator=(const ScopedVolumeFolders &) = delete;
};

} // namespace tarnwick::platform
