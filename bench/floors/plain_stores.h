#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::bench {

/// Copies a file, or a folder of files, inside the kernel, with no look at anything but the bytes.
void copyInKernel(const std::string &source, const std::string &destination);

/// Reads a whole file into fresh memory and notes where each quotation mark stands. Gives their
/// number.
size_t readAndFindMarks(const std::string &file);

/// Joins texts with a separator into fresh memory and writes the file over.
void joinAndWrite(const std::vector<std::string_view> &texts, const std::string &file);

} // namespace tarnwick::bench
