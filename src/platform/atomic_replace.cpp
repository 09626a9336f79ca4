#include "platform/file_attributes.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "platform/open_file.h"
#include "platform/system_calls.h"

#include <cerrno>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

/// A file that is to be replaced, opened so that its attributes can be taken over.
struct Target
{
    QByteArray path; ///< no link
    std::optional<OpenFile> file;
    struct stat status = {};
};

/// Follows links by hand, since one may point to a file that is still to be made.
int followLinks(QByteArray &path)
{
    constexpr int mostLinks = 40;
    for (int followed = 0; followed < mostLinks; ++followed) {
        struct stat status;
        const int error = calls::statusOf(path, status);
        if (error == ENOENT)
            return 0;
        if (error != 0 || !S_ISLNK(status.st_mode))
            return error;
        QByteArray next;
        if (const int unread = calls::readLink(path, next))
            return unread;
        path = next.startsWith('/') ? next : calls::folderPartOf(path) + next;
    }
    return ELOOP;
}

int openTarget(Target &target)
{
    struct stat status;
    if (const int error = calls::statusOf(target.path, status))
        return error == ENOENT ? 0 : error;
    if (!S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    auto file = OpenFile::open(target.path, O_RDONLY);
    if (!file)
        return file.error();
    target.file = std::move(*file);
    return target.file->status(target.status);
}

/// Never opens what stands at the temporary's path: a stale one is taken away first.
tl::expected<OpenFile, int> openTemporary(const QByteArray &path, mode_t mode)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL;
    auto file = OpenFile::open(path, flags, mode);
    if (file || file.error() != EEXIST)
        return file;
    if (const int error = calls::removeEntry(path))
        return tl::unexpected(error);
    return OpenFile::open(path, flags, mode);
}

int fillTemporary(OpenFile &temporary, const Target &target, std::span<const QByteArrayView> parts)
{
    if (const int error = temporary.write(parts))
        return error;
    if (target.file) {
        if (const int error = takeOverAttributes(*target.file, target.status, temporary))
            return error;
    }
    if (const int error = temporary.flush())
        return error;
    return temporary.close();
}

int replaceTarget(const Target &target, std::span<const QByteArrayView> parts)
{
    const QByteArray temporaryPath = calls::temporaryBeside(target.path);
    // Nobody else may read the new bytes before the target's own permission bits are set.
    auto temporary = openTemporary(temporaryPath, target.file ? 0600 : 0666);
    if (!temporary)
        return temporary.error();
    if (const int error = fillTemporary(*temporary, target, parts)) {
        calls::removeEntry(temporaryPath);
        return error;
    }
    if (const int error = calls::renameEntry(temporaryPath, target.path))
        return error;
    // The new bytes stand. Were the folder's entry lost in a power cut, the old file would be back.
    calls::flushFolderOf(target.path);
    return 0;
}

} // namespace

Done replaceFile(const QString &path, std::span<const QByteArrayView> parts)
{
    Target target{path.toUtf8(), std::nullopt};
    int error = path.isEmpty() ? ENOENT : followLinks(target.path);
    if (error == 0)
        error = openTarget(target);
    if (error == 0)
        error = replaceTarget(target, parts);
    if (error != 0)
        return tl::unexpected(describeFailure(path, u"written"_s, error));
    return {};
}

Done replaceFile(const QString &path, QByteArrayView content)
{
    return replaceFile(path, std::span(&content, 1));
}

} // namespace tarnwick::platform
