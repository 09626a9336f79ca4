#pragma once

#include <string>

namespace tarnwick::bench {

/// The system calls that no safe rewrite of a file can do without: read it whole, write a temporary
/// beside it, flush that, rename it over the file. The bytes stay the same.
void rewriteWhole(const std::string &file);

} // namespace tarnwick::bench
