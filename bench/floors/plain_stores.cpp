#include "floors/plain_stores.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick::bench {

namespace {

void insist(bool good)
{
    if (!good)
        std::abort();
}

/// Closed with the object.
class Descriptor
{
public:
    Descriptor(const std::string &path, int flags)
        : m_descriptor(::open(path.c_str(), flags | O_CLOEXEC, 0600))
    {
        insist(m_descriptor >= 0);
    }
    ~Descriptor() { ::close(m_descriptor); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    operator int() const { return m_descriptor; }
    size_t size() const
    {
        struct stat status;
        insist(::fstat(m_descriptor, &status) == 0);
        return size_t(status.st_size);
    }

private:
    int m_descriptor;
};

void writeAll(int file, const char *data, size_t count)
{
    while (count > 0) {
        const ssize_t written = ::write(file, data, count);
        insist(written > 0);
        data += written;
        count -= size_t(written);
    }
}

void copyFile(const std::string &source, const std::string &destination)
{
    const Descriptor from(source, O_RDONLY);
    const Descriptor to(destination, O_WRONLY | O_CREAT | O_EXCL);
    for (size_t left = from.size(); left > 0;) {
#ifdef __linux__
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, left, 0);
        insist(copied > 0);
        left -= size_t(copied);
#else
        std::vector<char> all(left);
        insist(::read(from, all.data(), left) == ssize_t(left));
        writeAll(to, all.data(), left);
        left = 0;
#endif
    }
}

} // namespace

void copyInKernel(const std::string &source, const std::string &destination)
{
    if (!std::filesystem::is_directory(source)) {
        copyFile(source, destination);
        return;
    }
    std::filesystem::create_directory(destination);
    for (const auto &entry : std::filesystem::directory_iterator(source))
        copyFile(entry.path(), destination + "/" + entry.path().filename().string());
}

size_t readAndFindMarks(const std::string &path)
{
    const Descriptor file(path, O_RDONLY);
    const size_t size = file.size();
    const auto bytes = std::make_unique_for_overwrite<char[]>(size);
    for (size_t filled = 0; filled < size;) {
        const ssize_t got = ::read(file, bytes.get() + filled, size - filled);
        insist(got > 0);
        filled += size_t(got);
    }
    std::vector<size_t> marks;
    const char *const end = bytes.get() + size;
    for (const char *at = bytes.get(); at < end; ++at) {
        at = static_cast<const char *>(std::memchr(at, '"', size_t(end - at)));
        if (!at)
            break;
        marks.push_back(size_t(at - bytes.get()));
    }
    return marks.size();
}

void joinAndWrite(const std::vector<std::string_view> &texts, const std::string &path)
{
    constexpr std::string_view separator = ",\n  ";
    size_t size = 0;
    for (const std::string_view text : texts)
        size += text.size() + separator.size();
    const auto bytes = std::make_unique_for_overwrite<char[]>(size);
    char *at = bytes.get();
    for (const std::string_view text : texts) {
        at = std::copy(text.begin(), text.end(), at);
        at = std::copy(separator.begin(), separator.end(), at);
    }
    const Descriptor file(path, O_WRONLY | O_CREAT | O_TRUNC);
    writeAll(file, bytes.get(), size);
}

} // namespace tarnwick::bench
