#pragma once

#include <cstddef>

namespace tarnwick::platform {

/// Tells the system that this memory is going to be filled from one end to the other, so that it
/// may give it in large pages: asking for it page by page costs as much as filling it. Does nothing
/// for less than some megabytes, or where the system has no large pages.
void expectToFill(void *start, size_t bytes);

} // namespace tarnwick::platform
