#include "safety/store.h"

#include "foundation/paths.h"
#include "platform/data_folder.h"
#include "platform/files_write.h"

#include <mutex>

using namespace Qt::StringLiterals;

namespace tarnwick::Store {

namespace {

constexpr mode_t ownerOnly = 0700;

QString subfolder(const QString &name)
{
    QString path = joinedPath(root(), name);
    (void)platform::makeFolders(path, ownerOnly);
    return path;
}

} // namespace

QString root()
{
    static std::mutex mutex;
    static QString made;
    QString folder = platform::dataFolder();
    const std::scoped_lock lock(mutex);
    if (made != folder) {
        (void)platform::makeFolders(folder, ownerOnly);
        made = folder;
    }
    return folder;
}

QString snapshots()
{
    return subfolder(u"Snapshots"_s);
}

QString holding()
{
    return subfolder(u"Holding"_s);
}

QString changeLog()
{
    return joinedPath(root(), u"changelog.json"_s);
}

QString cueVault()
{
    return joinedPath(root(), u"cuevault.json"_s);
}

QString signalConfig()
{
    return joinedPath(root(), u"signal.json"_s);
}

QString holdingManifest()
{
    return joinedPath(holding(), u"manifest.json"_s);
}

bool isPlainName(const QString &name)
{
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(QChar::Null) &&
           name != u"."_s && name != u".."_s;
}

} // namespace tarnwick::Store
