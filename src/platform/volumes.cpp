#include "platform/volumes.h"

#include "foundation/paths.h"
#include "platform/ask.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/mounts.h"
#include "platform/overridden.h"

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

Overridden<QStringList> foldersForTests;

QStringList volumeFolders()
{
    if (const auto folders = foldersForTests.value())
        return *folders;
    QStringList folders = {u"/Volumes"_s};
#ifdef Q_OS_LINUX
    if (const QString user = environmentVariable("USER").value_or(QString()); !user.isEmpty())
        folders << u"/media/"_s + user << u"/run/media/"_s + user;
    folders << u"/mnt"_s;
#endif
    return folders;
}

/// None where the folder can't be listed, or not in time.
QStringList namesIn(const QString &folder, const Mounts &mounts)
{
    const auto list = [folder] { return listFolder(folder).value_or(QStringList()); };
    if (!mounts.mayNeverAnswer(folder))
        return list();
    auto names = ask(list);
    return names.wait_for(patience) == std::future_status::ready ? names.get() : QStringList();
}

} // namespace

QList<Volume> volumes()
{
    const Mounts mounts = Mounts::now();
    QList<Volume> found;
    for (const QString &folder : volumeFolders()) {
        for (const QString &name : namesIn(folder, mounts))
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
    foldersForTests.set(folders);
}

ScopedVolumeFolders::~ScopedVolumeFolders()
{
    foldersForTests.reset();
}

} // namespace tarnwick::platform
