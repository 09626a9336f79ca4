#pragma once

#include "platform/files.h"

#include <cerrno>
#include <new>

namespace tarnwick::platform {

/// What `read` makes of a file, a Result; the failure that says so where memory runs out in it. For
/// readers whose need of memory is the file's choice.
template <typename Read>
auto readWithinMemory(const QString &path, Read read) -> decltype(read())
{
    try {
        return read();
    } catch (const std::bad_alloc &) {
        return tl::unexpected(describeFailure(path, QStringLiteral("read"), ENOMEM));
    }
}

} // namespace tarnwick::platform
