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

int writeOver(const QByteArray &path, std::span<const QByteArrayView> parts,
              std::optional<mode_t> mode)
{
    // Overwritten only once it is known to be a regular file.
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
    if (const int error = file->overwrite(parts))
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

} // namespace

Done writeFilePlainly(const QString &path, std::span<const QByteArrayView> parts,
                      std::optional<mode_t> mode)
{
    return outcome(path, u"written"_s, writeOver(path.toUtf8(), parts, mode));
}

Done writeFilePlainly(const QString &path, QByteArrayView content, std::optional<mode_t> mode)
{
    return writeFilePlainly(path, std::span(&content, 1), mode);
}

Done makeFolders(const QString &path, mode_t mode)
{
    QByteArray bytes = path.toUtf8();
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return outcome(path, u"created"_s, makeFolderChain(bytes, mode));
}

Result<bool> makeNewFolder(const QString &path, mode_t mode)
{
    const int error = calls::makeFolder(path.toUtf8(), mode);
    if (error != 0 && error != EEXIST)
        return tl::unexpected(describeFailure(path, u"created"_s, error));
    return error == 0;
}

} // namespace tarnwick::platform
