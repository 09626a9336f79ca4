#include "platform/large_memory.h"

#include <QtGlobal>

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace tarnwick::platform {

void expectToFill(void *start, size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr size_t worthwhile = 4 << 20;
    if (bytes < worthwhile)
        return;
    const auto page = std::uintptr_t(::sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t first = (address + page - 1) & ~(page - 1);
    const std::uintptr_t end = (address + bytes) & ~(page - 1);
    // A refusal costs time alone.
    (void)::madvise(static_cast<char *>(start) + (first - address), end - first, MADV_HUGEPAGE);
#else
    Q_UNUSED(start);
    Q_UNUSED(bytes);
#endif
}

} // namespace tarnwick::platform
