#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tarnwick::bench {

/// The system calls that no probe of a tag can do without: open, one read of the tag, close.
/// Returns the bytes read.
size_t readTags(const std::vector<std::string> &files, size_t tagBytes);

/// The same with the question of existence and size ahead of each.
size_t statAndReadTags(const std::vector<std::string> &files, size_t tagBytes);

/// A whole file into fresh memory.
std::vector<char> readWhole(const std::string &file);

/// A pointer through every record and every field of a database, looking at nothing else. Returns
/// the number of fields.
size_t walkRecords(const char *bytes, size_t count);

} // namespace tarnwick::bench
