#pragma once

#include <QFile>

#include <sys/resource.h>
#include <unistd.h>

namespace tarnwick::testing {

/// Lets the process take no more than so many bytes of memory beyond what it has, for the guard's
/// life. Of no use under the address sanitizer, which takes far more at once.
class ScopedAddressSpace
{
public:
    explicit ScopedAddressSpace(quint64 more)
    {
        QFile usage(QStringLiteral("/proc/self/statm"));
        if (!usage.open(QIODevice::ReadOnly) || ::getrlimit(RLIMIT_AS, &m_before) != 0)
            qFatal("the use of memory can't be told");
        const quint64 pages = usage.readAll().split(' ').first().toULongLong();
        rlimit limit = m_before;
        limit.rlim_cur = pages * quint64(::sysconf(_SC_PAGESIZE)) + more;
        ::setrlimit(RLIMIT_AS, &limit);
    }
    ~ScopedAddressSpace() { ::setrlimit(RLIMIT_AS, &m_before); }
    ScopedAddressSpace(const ScopedAddressSpace &) = delete;
    ScopedAddressSpace &operator=(const ScopedAddressSpace &) = delete;

private:
    rlimit m_before;
};

} // namespace tarnwick::testing
