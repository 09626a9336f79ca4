#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

namespace tarnwick::platform {

/// Where the file systems are mounted that are no disks: those of the kernel, of programs, and of
/// machines across the network, which may have gone away. Any question about what lies below one
/// of the latter can wait for ever, so this asks the system's list of mounts instead.
class Mounts
{
public:
    /// As the system has them now. None where it doesn't tell.
    static Mounts now();

    /// The mount points, as the system's own bytes.
    const QSet<QByteArray> &thatAreNoDisks() const { return m_noDisks; }

    /// Whether a question about the file at an absolute path may wait for ever. Follows links, and
    /// stops at the first mount point that counts.
    bool mayNeverAnswer(const QString &path) const;

private:
    explicit Mounts(const QSet<QByteArray> &noDisks)
        : m_noDisks(noDisks)
    {}

    QSet<QByteArray> m_noDisks;
};

/// Takes this for the kernel's list of mounts, in the form of /proc/self/mountinfo, for the guard's
/// life. For tests.
class ScopedMounts
{
public:
    explicit ScopedMounts(const QByteArray &list);
    ~ScopedMounts();
    ScopedMounts(const ScopedMounts &) = delete;
    ScopedMounts &operator=(const ScopedMounts &) = delete;
};

} // namespace tarnwick::platform
