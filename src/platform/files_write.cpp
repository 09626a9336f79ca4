#include "platform/files_write.h"

#include "platform/files.h"
#include "platform/open_file.h"
#include "platform/system_calls.h"

#include <algorithm>

#include <cerrno>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

Done outcome(const QString &path, const QString &doing, int error)
{
    if (error != 0)
        return tl::unexpected(describeFailure(path, doing, error));
    return {};
}

int writeOver(const QByteArray &path, QByteArrayView content, std::optional<mode_t> mode)
{
    // Cut to nothing only once it is known to be a regular file.
    auto file = OpenFile::open(path, O_WRONLY | O_CREAT, mode.value_or(0666));
    if (!file)
        return file.error();
    struct stat status;
    if (const int error = file->status(status))
        return error;
    if (!S_ISREG(status.st_mode))
        return EINVAL;
    if (mode && (status.st_mode & 07777) != *mode) {
        if (const int error = calls::setMode(path, *mode))
            return error;
    }
    if (const int error = file->cutToNothing())
        return error;
    if (const int error = file->write(std::span(&content, 1)))
        return error;
    return file->close();
}

bool isFolderItself(const QByteArray &path)
{
    return isFolder(QString::fromUtf8(path));
}

int makeFolderChain(const QByteArray &path, mode_t mode)
{
    const int error = calls::makeFolder(path, mode);
    if (error == EEXIST)
        return isFolderItself(path) ? 0 : EEXIST;
    if (error != ENOENT)
        return error;
    const QByteArray above = path.first(std::max<qsizetype>(path.lastIndexOf('/'), 0));
    if (above.isEmpty())
        return error;
    if (const int failed = makeFolderChain(above, mode))
        return failed;
    return calls::makeFolder(path, mode);
}

int removeWhole(const QByteArray &path);

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

} // namespace

Done writeFilePlainly(const QString &path, QByteArrayView content, std::optional<mode_t> mode)
{
    return outcome(path, u"written"_s, writeOver(path.toUtf8(), content, mode));
}

Done makeFolders(const QString &path, mode_t mode)
{
    QByteArray bytes = path.toUtf8();
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return outcome(path, u"created"_s, makeFolderChain(bytes, mode));
}

Done removeFile(const QString &path)
{
    return outcome(path, u"removed"_s, calls::removeEntry(path.toUtf8()));
}

Done removeTree(const QString &path)
{
    const int error = removeWhole(path.toUtf8());
    return outcome(path, u"removed"_s, error == ENOENT ? 0 : error);
}

} // namespace tarnwick::platform
