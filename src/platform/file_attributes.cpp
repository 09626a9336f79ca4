#include "platform/file_attributes.h"

#include "platform/open_file.h"
#include "platform/system_calls.h"

#include <QByteArray>
#include <QByteArrayList>

#include <cerrno>

#include <sys/time.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tarnwick::platform {

namespace {

#ifdef Q_OS_MACOS
ssize_t listAttributes(int file, char *out, size_t size)
{
    return ::flistxattr(file, out, size, 0);
}
ssize_t getAttribute(int file, const char *name, char *out, size_t size)
{
    return ::fgetxattr(file, name, out, size, 0, 0);
}
int setAttribute(int file, const char *name, const QByteArray &value)
{
    return ::fsetxattr(file, name, value.constData(), size_t(value.size()), 0, 0);
}
#else
ssize_t listAttributes(int file, char *out, size_t size)
{
    return ::flistxattr(file, out, size);
}
ssize_t getAttribute(int file, const char *name, char *out, size_t size)
{
    return ::fgetxattr(file, name, out, size);
}
int setAttribute(int file, const char *name, const QByteArray &value)
{
    return ::fsetxattr(file, name, value.constData(), size_t(value.size()), 0);
}
#endif

/// True for what a user may simply not be allowed to set, or a file system not be able to keep.
bool isNotOurs(int error)
{
    return error == EPERM || error == EACCES || error == ENOTSUP || error == EINVAL;
}

int pardoned(int result)
{
    return result == 0 || isNotOurs(errno) ? 0 : errno;
}

QByteArrayList namesOfAttributes(int file)
{
    const ssize_t size = listAttributes(file, nullptr, 0);
    if (size <= 0)
        return {};
    QByteArray names(size, '\0');
    const ssize_t got = listAttributes(file, names.data(), size_t(size));
    if (got <= 0)
        return {};
    names.truncate(got - 1); // each name ends in NUL
    return names.split('\0');
}

int copyAttribute(const OpenFile &source, const QByteArray &name, const OpenFile &target)
{
    const ssize_t size = getAttribute(source.descriptor(), name.constData(), nullptr, 0);
    if (size < 0)
        return pardoned(-1);
    QByteArray value(size, '\0');
    const ssize_t got =
        getAttribute(source.descriptor(), name.constData(), value.data(), size_t(size));
    if (got < 0)
        return pardoned(-1);
    value.truncate(got);
    if (const int fault = calls::gate(FileOperation::SetAttributes, target.path()))
        return fault;
    return pardoned(setAttribute(target.descriptor(), name.constData(), value));
}

int copyExtendedAttributes(const OpenFile &source, const OpenFile &target)
{
    for (const QByteArray &name : namesOfAttributes(source.descriptor())) {
        if (const int error = copyAttribute(source, name, target))
            return error;
    }
    return 0;
}

/// The owner where this user may give the file away, else at least the group.
int copyOwner(const struct stat &wanted, const struct stat &present, const OpenFile &target)
{
    if (wanted.st_uid == present.st_uid && wanted.st_gid == present.st_gid)
        return 0;
    if (const int fault = calls::gate(FileOperation::SetAttributes, target.path()))
        return fault;
    if (::fchown(target.descriptor(), wanted.st_uid, wanted.st_gid) == 0)
        return 0;
    return pardoned(::fchown(target.descriptor(), uid_t(-1), wanted.st_gid));
}

int copyMode(const struct stat &wanted, const OpenFile &target)
{
    constexpr mode_t permissionBits = 07777;
    if (const int fault = calls::gate(FileOperation::SetAttributes, target.path()))
        return fault;
    return pardoned(::fchmod(target.descriptor(), wanted.st_mode & permissionBits));
}

} // namespace

int takeOverAttributes(const OpenFile &source, const struct stat &status, const OpenFile &target)
{
    struct stat present;
    if (const int error = target.status(present))
        return error;
    // Giving a file away drops some of its permission bits, so the mode comes last.
    if (const int error = copyOwner(status, present, target))
        return error;
    if (const int error = copyExtendedAttributes(source, target))
        return error;
    return copyMode(status, target);
}

int takeOverTimes(const struct stat &status, const OpenFile &target)
{
    if (const int fault = calls::gate(FileOperation::SetAttributes, target.path()))
        return fault;
#ifdef Q_OS_MACOS
    const timespec times[] = {status.st_atimespec, status.st_mtimespec};
#else
    const timespec times[] = {status.st_atim, status.st_mtim};
#endif
    return pardoned(::futimens(target.descriptor(), times));
}

} // namespace tarnwick::platform
