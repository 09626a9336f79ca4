#include "platform/mounts.h"

#include "platform/files.h"
#include "platform/overridden.h"
#include "platform/system_calls.h"

#include <QByteArrayList>

#include <optional>

#ifdef Q_OS_MACOS
#include <sys/mount.h>
#include <vector>
#endif

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

Overridden<QByteArray> listForTests;

/// By the name that the kernel has for a file system. Those of `fuse.` come from programs, most of
/// them over a network; a disk behind fuse is called "fuseblk".
bool isNoDisk(QByteArrayView type)
{
    static const QByteArrayList names = {
        "9p",         "afs",       "autofs",   "binfmt_misc", "bpf",       "ceph",
        "cgroup",     "cgroup2",   "cifs",     "coda",        "configfs",  "debugfs",
        "devpts",     "devtmpfs",  "efivarfs", "fusectl",     "hugetlbfs", "mqueue",
        "ncpfs",      "nfs",       "nfs4",     "nsfs",        "proc",      "pstore",
        "securityfs", "selinuxfs", "smb3",     "smbfs",       "sysfs",     "tracefs",
    };
    return names.contains(type.toByteArray()) || type.startsWith("fuse.");
}

/// A mount point as the kernel lists it, its octal escapes resolved.
QByteArray unescaped(const QByteArray &field)
{
    QByteArray path;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool isOctal = false;
        const int code = field.mid(i + 1, 3).toInt(&isOctal, 8);
        if (field.at(i) == '\\' && isOctal) {
            path.append(char(code));
            i += 3;
        } else {
            path.append(field.at(i));
        }
    }
    return path;
}

/// Of two file systems on one mount point the later covers the other: so a disk that is mounted on
/// demand is one.
QSet<QByteArray> noDisksIn(const QByteArray &list)
{
    constexpr int mountPointField = 4;
    QSet<QByteArray> noDisks;
    for (const QByteArray &line : list.split('\n')) {
        const QByteArrayList fields = line.split(' ');
        const qsizetype separator = fields.indexOf("-");
        if (separator <= mountPointField || separator + 1 >= fields.size())
            continue;
        const QByteArray mountPoint = unescaped(fields.at(mountPointField));
        if (isNoDisk(fields.at(separator + 1)))
            noDisks.insert(mountPoint);
        else
            noDisks.remove(mountPoint);
    }
    return noDisks;
}

QSet<QByteArray> noDisksOfTheSystem()
{
#ifdef Q_OS_MACOS
    const int count = ::getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<struct statfs> mounts(size_t(std::max(count, 0)));
    const int size = int(mounts.size() * sizeof(struct statfs));
    mounts.resize(size_t(std::max(::getfsstat(mounts.data(), size, MNT_NOWAIT), 0)));
    QSet<QByteArray> noDisks;
    for (const struct statfs &mount : mounts) {
        if (!(mount.f_flags & MNT_LOCAL) || isNoDisk(mount.f_fstypename))
            noDisks.insert(mount.f_mntonname);
    }
    return noDisks;
#else
    return noDisksIn(readFile(u"/proc/self/mountinfo"_s).value_or(QByteArray()));
#endif
}

/// Puts the parts of a path in front of those that are still to be gone through.
void pushParts(QByteArrayList &waiting, const QByteArray &path)
{
    const QByteArrayList parts = path.split('/');
    for (auto part = parts.crbegin(); part != parts.crend(); ++part)
        waiting.append(*part);
}

/// Where the link at a path points to; nothing if none is there.
std::optional<QByteArray> targetOfLink(const QByteArray &path)
{
    struct stat status;
    QByteArray target;
    if (calls::statusOf(path, status) != 0 || !S_ISLNK(status.st_mode) ||
        calls::readLink(path, target) != 0)
        return std::nullopt;
    return target;
}

} // namespace

Mounts Mounts::now()
{
    const auto list = listForTests.value();
    return Mounts(list ? noDisksIn(*list) : noDisksOfTheSystem());
}

bool Mounts::mayNeverAnswer(const QString &path) const
{
    int linksLeft = 40; // as many as the kernel follows
    QByteArray reached;
    QByteArrayList waiting;
    pushParts(waiting, path.toUtf8());
    while (!waiting.isEmpty()) {
        const QByteArray part = waiting.takeLast();
        if (part.isEmpty() || part == ".")
            continue;
        if (part == "..") {
            reached.truncate(std::max<qsizetype>(reached.lastIndexOf('/'), 0));
            continue;
        }
        const QByteArray next = reached + '/' + part;
        if (m_noDisks.contains(next))
            return true;
        if (const auto target = targetOfLink(next); target && linksLeft-- > 0) {
            if (target->startsWith('/'))
                reached.clear();
            pushParts(waiting, *target);
        } else {
            reached = next;
        }
    }
    return false;
}

ScopedMounts::ScopedMounts(const QByteArray &list)
{
    listForTests.set(list);
}

ScopedMounts::~ScopedMounts()
{
    listForTests.reset();
}

} // namespace tarnwick::platform
