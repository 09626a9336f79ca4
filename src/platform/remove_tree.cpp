#include "platform/remove_tree.h"

#include "platform/files.h"
#include "platform/files_write.h"
#include "platform/system_calls.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

Done outcome(const QString &path, int error)
{
    if (error != 0)
        return tl::unexpected(describeFailure(path, u"removed"_s, error));
    return {};
}

int removeContents(const QByteArray &folder)
{
    QByteArrayList names;
    if (const int error = calls::listFolder(folder, names))
        return error;
    for (const QByteArray &name : names) {
        if (const int error = removeWhole(folder + '/' + name))
            return error;
    }
    return 0;
}

} // namespace

int removeWhole(const QByteArray &path)
{
    struct stat status;
    if (const int error = calls::statusOf(path, status))
        return error;
    if (!S_ISDIR(status.st_mode))
        return calls::removeEntry(path);
    if (const int error = removeContents(path))
        return error;
    return calls::removeFolder(path);
}

Done removeFile(const QString &path)
{
    return outcome(path, calls::removeEntry(path.toUtf8()));
}

Done removeEmptyFolder(const QString &path)
{
    return outcome(path, calls::removeFolder(path.toUtf8()));
}

Done removeTree(const QString &path)
{
    const int error = removeWhole(path.toUtf8());
    return outcome(path, error == ENOENT ? 0 : error);
}

} // namespace tarnwick::platform
