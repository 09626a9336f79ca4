#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick::platform {

/// Where and for what to look.
struct FileSearch
{
    QStringList roots;      ///< folders; what lies below them is searched
    QStringList leftOut;    ///< folders that are not entered
    QStringList extensions; ///< lower case; files of others are passed over
};

/// The home folder and every volume, but for the application's own data folder.
FileSearch searchOfThisMachine();

/// For each text the regular files whose name contains it, letter case ignored, in path order. All
/// texts are answered in one walk. Hidden folders, links to folders and file systems that are no
/// disks (of the kernel, of the network) are not entered; a folder that can't be listed is passed
/// over. Takes seconds on a large disk: for a background task.
QList<QStringList> findFiles(const FileSearch &search, const QStringList &texts);

} // namespace tarnwick::platform
