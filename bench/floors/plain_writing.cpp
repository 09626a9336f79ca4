#include "floors/plain_writing.h"

#include "floors/plain_reading.h"

#include <vector>

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace tarnwick::bench {

void rewriteWhole(const std::string &file)
{
    const std::vector<char> bytes = readWhole(file);
    const std::string temporary = file + ".floor";
    const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const bool isWritten = ::write(descriptor, bytes.data(), bytes.size()) == ssize_t(bytes.size());
    if (!isWritten || ::fsync(descriptor) != 0 || ::close(descriptor) != 0 ||
        ::rename(temporary.c_str(), file.c_str()) != 0)
        std::abort();
}

} // namespace tarnwick::bench
