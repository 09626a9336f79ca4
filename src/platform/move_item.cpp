#include "platform/copy_item.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "platform/open_file.h"
#include "platform/system_calls.h"

#include <cerrno>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

/// Makes an empty entry of the kind that a rename of `source` may take the place of. Fails where
/// anything stands, so that what the rename then replaces is our own.
int reserve(const QByteArray &destination, const struct stat &source)
{
    if (S_ISDIR(source.st_mode))
        return calls::makeFolder(destination, 0700);
    const auto file = OpenFile::open(destination, O_WRONLY | O_CREAT | O_EXCL, 0600);
    return file ? 0 : file.error();
}

/// For file systems that know no rename without replacing.
int renameOntoReservation(const QByteArray &source, const QByteArray &destination)
{
    struct stat status;
    if (const int error = calls::statusOf(source, status))
        return error;
    if (const int error = reserve(destination, status))
        return error;
    const int error = calls::renameEntry(source, destination);
    if (error != 0)
        S_ISDIR(status.st_mode) ? calls::removeFolder(destination)
                                : calls::removeEntry(destination);
    return error;
}

int moveWithinFileSystem(const QByteArray &source, const QByteArray &destination)
{
    const int error = calls::renameWithoutReplacing(source, destination);
    const bool isUnknownHere = error == EINVAL || error == ENOSYS || error == ENOTSUP;
    return isUnknownHere ? renameOntoReservation(source, destination) : error;
}

bool isOccupied(const QByteArray &path)
{
    struct stat status;
    return calls::statusOf(path, status) == 0;
}

/// EIO where the copy is not as long as what was to be moved.
int compareSizes(const QByteArray &source, const QByteArray &copy)
{
    struct stat original;
    if (const int error = calls::statusOf(source, original))
        return error;
    struct stat copied;
    if (const int error = calls::statusOf(copy, copied))
        return error;
    return original.st_size == copied.st_size ? 0 : EIO;
}

int putCopyInPlace(const QByteArray &source, const QByteArray &copy, const QByteArray &destination)
{
    if (const int error = copyEntry(source, copy, Flush::Yes))
        return error;
    if (const int error = compareSizes(source, copy))
        return error;
    return moveWithinFileSystem(copy, destination);
}

/// Once the copy stands under its own name. The copy goes only if the source is surely still there.
int removeSource(const QByteArray &source, const QByteArray &destination)
{
    int error = calls::flushFolderOf(destination);
    if (error == 0)
        error = calls::removeEntry(source);
    if (error != 0 && compareSizes(source, destination) == 0)
        calls::removeEntry(destination);
    return error;
}

int moveAcrossFileSystems(const QByteArray &source, const QByteArray &destination)
{
    struct stat status;
    if (const int error = calls::statusOf(source, status))
        return error;
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        return EXDEV;
    // Told at once rather than after the copying; the rename at the end tests it for good.
    if (isOccupied(destination))
        return EEXIST;
    const QByteArray copy = calls::temporaryBeside(destination);
    if (isOccupied(copy)) {
        if (const int error = calls::removeEntry(copy))
            return error;
    }
    if (const int error = putCopyInPlace(source, copy, destination)) {
        if (isOccupied(source)) // else the copy may be all that is left
            calls::removeEntry(copy);
        return error;
    }
    return removeSource(source, destination);
}

} // namespace

Done moveWithoutReplacing(const QString &source, const QString &destination)
{
    const QByteArray from = source.toUtf8();
    const QByteArray to = destination.toUtf8();
    int error = moveWithinFileSystem(from, to);
    if (error == EXDEV)
        error = moveAcrossFileSystems(from, to);
    if (error != 0)
        return tl::unexpected(describeFailure(source, u"moved"_s, error));
    return {};
}

} // namespace tarnwick::platform
