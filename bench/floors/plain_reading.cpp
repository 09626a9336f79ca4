#include "floors/plain_reading.h"

#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick::bench {

namespace {

size_t readTag(const std::string &file, std::vector<char> &buffer)
{
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    ::close(descriptor);
    return count > 0 ? size_t(count) : 0;
}

size_t lengthAt(const char *bytes)
{
    const auto *at = reinterpret_cast<const unsigned char *>(bytes);
    return size_t(at[0]) << 24 | size_t(at[1]) << 16 | size_t(at[2]) << 8 | at[3];
}

} // namespace

size_t readTags(const std::vector<std::string> &files, size_t tagBytes)
{
    std::vector<char> buffer(tagBytes);
    size_t sum = 0;
    for (const std::string &file : files)
        sum += readTag(file, buffer);
    return sum;
}

size_t statAndReadTags(const std::vector<std::string> &files, size_t tagBytes)
{
    std::vector<char> buffer(tagBytes);
    size_t sum = 0;
    struct stat status;
    for (const std::string &file : files) {
        if (::stat(file.c_str(), &status) == 0)
            sum += readTag(file, buffer);
    }
    return sum;
}

std::vector<char> readWhole(const std::string &file)
{
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status;
    std::vector<char> bytes;
    if (::fstat(descriptor, &status) == 0) {
        bytes.resize(size_t(status.st_size));
        size_t filled = 0;
        while (filled < bytes.size()) {
            const ssize_t got = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
            if (got <= 0)
                break;
            filled += size_t(got);
        }
    }
    ::close(descriptor);
    return bytes;
}

size_t walkRecords(const char *bytes, size_t count)
{
    size_t fields = 0;
    for (size_t at = 0; at + 8 <= count;) {
        const size_t end = at + 8 + lengthAt(bytes + at + 4);
        if (std::memcmp(bytes + at, "otrk", 4) == 0) {
            for (size_t inner = at + 8; inner + 8 <= end; ++fields)
                inner += 8 + lengthAt(bytes + inner + 4);
        }
        at = end;
    }
    return fields;
}

} // namespace tarnwick::bench
