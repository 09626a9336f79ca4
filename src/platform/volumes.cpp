#include "platform/volumes.h"

#include "foundation/paths.h"
#include "platform/environment.h"
#include "platform/files.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

std::optional<QStringList> foldersForTests;

QStringList volumeFolders()
{
    if (foldersForTests)
        return *foldersForTests;
    QStringList folders = {u"/Volumes"_s};
#ifdef Q_OS_LINUX
    if (const QString user = environmentVariable("USER").value_or(QString()); !user.isEmpty())
        folders << u"/media/"_s + user << u"/run/media/"_s + user;
    folders << u"/mnt"_s;
#endif
    return folders;
}

} // namespace

QList<Volume> volumes()
{
    QList<Volume> found;
    for (const QString &folder : volumeFolders()) {
        const QStringList names = listFolder(folder).value_or(QStringList());
        for (const QString &name : names)
            found.append({name, joinedPath(folder, name)});
    }
    return found;
}

QString volumeNameOf(const QString &path)
{
    for (const QString &folder : volumeFolders()) {
        const QString start = joinedPath(folder, QString());
        if (path.startsWith(start))
            return path.sliced(start.size()).section(u'/', 0, 0);
    }
    return {};
}

QString systemDiskName()
{
#ifdef Q_OS_MACOS
    return u"Macintosh HD"_s;
#else
    return u"System disk"_s;
#endif
}

ScopedVolumeFolders::ScopedVolumeFolders(const QStringList &folders)
{
    foldersForTests = folders;
}

ScopedVolumeFolders::~ScopedVolumeFolders()
{
    foldersForTests.reset();
}

} // namespace tarnwick::platform
