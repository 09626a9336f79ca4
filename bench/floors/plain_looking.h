#pragma once

#include <cstddef>
#include <string>

namespace tarnwick::bench {

/// Reads the entries of a folder and of all below it, without a look at their names but for a
/// folder's. Returns how many there are.
size_t walkFolders(const std::string &root);

/// Reads the name of every process. Returns how many there are.
size_t readProcessNames();

} // namespace tarnwick::bench
