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

/// How long another process may take with the same temporary before a write gives up.
constexpr std::chrono::milliseconds patienceWithOthers(5000);

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

bool isStill(const OpenFile &file, const QByteArray &path)
{
    struct stat opened;
    struct stat standing;
    return ::fstat(file.descriptor(), &opened) == 0 && ::lstat(path.constData(), &standing) == 0 &&
           opened.st_dev == standing.st_dev && opened.st_ino == standing.st_ino;
}

/// Takes away what stands at the temporary's path, unless another process is writing it: then it is
/// EWOULDBLOCK, once that has gone on for a while. Nothing but a regular file is opened.
int removeStale(const QByteArray &path)
{
    struct stat status;
    if (const int error = calls::statusOf(path, status))
        return error == ENOENT ? 0 : error;
    if (!S_ISREG(status.st_mode))
        return calls::removeEntry(path);
    const auto file = OpenFile::open(path, O_RDONLY | O_NOFOLLOW);
    if (!file) // gone meanwhile, or nothing that this user could be writing
        return file.error() == ENOENT ? 0 : calls::removeEntry(path);
    if (file->lock(OpenFile::Lock::Exclusive, patienceWithOthers) == EWOULDBLOCK)
        return EWOULDBLOCK;
    return isStill(*file, path) ? calls::removeEntry(path) : 0;
}

/// A temporary that no other process takes for a stale one while it is open. Never opens for
/// writing what stands at its path.
tl::expected<OpenFile, int> openTemporary(const QByteArray &path, mode_t mode)
{
    constexpr int mostTries = 100;
    for (int tries = 0; tries < mostTries; ++tries) {
        auto file = OpenFile::open(path, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (!file && file.error() != EEXIST)
            return file;
        if (!file) {
            if (const int error = removeStale(path))
                return tl::unexpected(error);
            continue;
        }
        // Where the system knows no locks, none keeps the file from being this one.
        if (file->lock(OpenFile::Lock::Exclusive, {}) != EWOULDBLOCK && isStill(*file, path))
            return file;
    }
    return tl::unexpected(EWOULDBLOCK);
}

int fillTemporary(OpenFile &temporary, const Target &target, std::span<const QByteArrayView> parts)
{
    if (const int error = temporary.write(parts))
        return error;
    if (target.file) {
        if (const int error = takeOverAttributes(*target.file, target.status, temporary))
            return error;
    }
    return temporary.flush();
}

/// Closes the temporary, whose lock stays with the descriptor that this gives.
int closeKeepingLock(OpenFile &temporary, std::optional<OpenFile> &keeper)
{
    keeper = temporary.duplicate();
    return temporary.close();
}

int replaceTarget(const Target &target, std::span<const QByteArrayView> parts)
{
    const QByteArray temporaryPath = calls::temporaryBeside(target.path);
    // Nobody else may read the new bytes before the target's own permission bits are set.
    auto temporary = openTemporary(temporaryPath, target.file ? 0600 : 0666);
    if (!temporary)
        return temporary.error();
    std::optional<OpenFile> keeper; // until the rename: no other write may begin ahead of it
    int failed = fillTemporary(*temporary, target, parts);
    if (failed == 0)
        failed = closeKeepingLock(*temporary, keeper);
    if (failed != 0) {
        calls::removeEntry(temporaryPath);
        return failed;
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
