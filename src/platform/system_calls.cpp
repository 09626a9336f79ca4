#include "platform/system_calls.h"

#include <algorithm>
#include <memory>

#include <cerrno>
#include <climits>
#include <cstdio>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace tarnwick::platform::calls {

namespace {

/// 0 or the errno value of a call that answers -1 for a failure.
template <typename Call>
int errorOf(Call call)
{
    while (call() < 0) {
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

template <typename Call>
int gated(FileOperation operation, const QByteArray &path, Call call)
{
    if (const int fault = gate(operation, path))
        return fault;
    return errorOf(call);
}

} // namespace

QByteArray folderPartOf(const QByteArray &path)
{
    return path.first(path.lastIndexOf('/') + 1);
}

QByteArray temporaryBeside(const QByteArray &path)
{
    const QByteArray folder = folderPartOf(path);
    return folder + '.' + path.sliced(folder.size()) + ".twtmp";
}

int gate(FileOperation operation, const QByteArray &path)
{
    if (path.contains('\0'))
        return ENOENT;
    return faultFor(operation, QString::fromUtf8(path));
}

int statusOf(const QByteArray &path, struct stat &status)
{
    return gated(FileOperation::Stat, path, [&] { return ::lstat(path.constData(), &status); });
}

int listFolder(const QByteArray &path, QByteArrayList &names)
{
    if (const int fault = gate(FileOperation::List, path))
        return fault;
    const auto close = [](DIR *folder) { ::closedir(folder); };
    const std::unique_ptr<DIR, decltype(close)> folder(::opendir(path.constData()), close);
    if (!folder)
        return errno;
    errno = 0; // readdir() tells its failures apart from the end by this alone
    // cppcheck-suppress readdirCalled ; no other thread has this stream
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    while (const dirent *entry = ::readdir(folder.get())) {
        const QByteArray name = entry->d_name;
        if (name != "." && name != "..")
            names.append(name);
        errno = 0;
    }
    const int error = errno;
    std::sort(names.begin(), names.end());
    return error;
}

int makeFolder(const QByteArray &path, mode_t mode)
{
    return gated(FileOperation::MakeFolder, path, [&] { return ::mkdir(path.constData(), mode); });
}

int setMode(const QByteArray &path, mode_t mode)
{
    return gated(FileOperation::SetAttributes, path,
                 [&] { return ::chmod(path.constData(), mode); });
}

int removeEntry(const QByteArray &path)
{
    return gated(FileOperation::Remove, path, [&] { return ::unlink(path.constData()); });
}

int removeFolder(const QByteArray &path)
{
    return gated(FileOperation::Remove, path, [&] { return ::rmdir(path.constData()); });
}

int renameEntry(const QByteArray &from, const QByteArray &to)
{
    if (to.contains('\0'))
        return ENOENT;
    return gated(FileOperation::Rename, from,
                 [&] { return ::rename(from.constData(), to.constData()); });
}

int renameWithoutReplacing(const QByteArray &from, const QByteArray &to)
{
    if (to.contains('\0'))
        return ENOENT;
    return gated(FileOperation::Rename, from, [&] {
#ifdef Q_OS_MACOS
        return ::renamex_np(from.constData(), to.constData(), RENAME_EXCL);
#else
        return ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE);
#endif
    });
}

int exchangeEntries(const QByteArray &one, const QByteArray &other)
{
    return gated(FileOperation::Rename, one, [&] {
#ifdef Q_OS_MACOS
        return ::renamex_np(one.constData(), other.constData(), RENAME_SWAP);
#else
        return ::renameat2(AT_FDCWD, one.constData(), AT_FDCWD, other.constData(), RENAME_EXCHANGE);
#endif
    });
}

int readLink(const QByteArray &path, QByteArray &target)
{
    target.resize(PATH_MAX);
    return gated(FileOperation::Stat, path, [&] {
        const ssize_t length = ::readlink(path.constData(), target.data(), size_t(target.size()));
        target.truncate(length < 0 ? 0 : length);
        return length < 0 ? -1 : 0;
    });
}

int makeLink(const QByteArray &target, const QByteArray &path)
{
    return gated(FileOperation::Copy, path,
                 [&] { return ::symlink(target.constData(), path.constData()); });
}

int makeSpecial(const QByteArray &path, const struct stat &like)
{
    return gated(FileOperation::Copy, path,
                 [&] { return ::mknod(path.constData(), like.st_mode, like.st_rdev); });
}

int flushFolderOf(const QByteArray &path)
{
    const QByteArray folderPath = folderPartOf(path) + '.';
    if (const int fault = gate(FileOperation::Flush, folderPath))
        return fault;
    const int folder = ::open(folderPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return errno;
    const int error = errorOf([&] { return ::fsync(folder); });
    ::close(folder);
    return error == EINVAL || error == ENOTSUP ? 0 : error;
}

} // namespace tarnwick::platform::calls
