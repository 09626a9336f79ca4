#pragma once

#include <QString>

#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif

namespace tarnwick::testing {

/// A file system of 64 KB over a folder, where the system lets this user mount one. No other
/// process sees it, and it ends with the process at the latest.
class TinyDisk
{
public:
#ifdef __linux__
    explicit TinyDisk(const QString &folder)
        : m_folder(folder.toLocal8Bit())
        , m_isMounted(::unshare(CLONE_NEWNS) == 0 &&
                      ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                      ::mount("none", m_folder.constData(), "tmpfs", 0, "size=64k") == 0)
    {}
    ~TinyDisk()
    {
        if (m_isMounted)
            ::umount2(m_folder.constData(), MNT_DETACH);
    }
#else
    explicit TinyDisk(const QString &) {}
#endif
    TinyDisk(const TinyDisk &) = delete;
    TinyDisk &operator=(const TinyDisk &) = delete;

    bool isMounted() const
    {
        return m_isMounted;
    }

private:
    QByteArray m_folder;
    bool m_isMounted = false;
};

} // namespace tarnwick::testing
