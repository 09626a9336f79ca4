#include "platform/file_handle.h"

#include "platform/fault_gate.h"

#include <algorithm>
#include <utility>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick::platform {

namespace {

/// The errno value for what can't be read as a file, or 0.
int refusalOf(mode_t mode)
{
    if (S_ISREG(mode))
        return 0;
    return S_ISDIR(mode) ? EISDIR : EINVAL;
}

int openDescriptor(const QByteArray &path)
{
    int descriptor = -1;
    do
        descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

} // namespace

FileHandle::SystemResult<FileHandle> FileHandle::openKnownRegular(const QString &path)
{
    if (path.contains(QChar::Null))
        return tl::unexpected(ENOENT);
    if (const int fault = faultFor(FileOperation::Open, path))
        return tl::unexpected(fault);
    const int descriptor = openDescriptor(path.toUtf8());
    if (descriptor < 0)
        return tl::unexpected(errno);
    return FileHandle(descriptor, 0, path);
}

FileHandle::SystemResult<FileHandle> FileHandle::openForReading(const QString &path)
{
    auto file = openKnownRegular(path);
    if (!file)
        return file;
    struct stat status;
    if (::fstat(file->m_descriptor, &status) != 0)
        return tl::unexpected(errno);
    if (const int refusal = refusalOf(status.st_mode))
        return tl::unexpected(refusal);
    file->m_size = quint64(status.st_size);
    return file;
}

FileHandle::FileHandle(FileHandle &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_size(other.m_size)
    , m_path(std::move(other.m_path))
{}

FileHandle &FileHandle::operator=(FileHandle &&other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_size, other.m_size);
    std::swap(m_path, other.m_path);
    return *this;
}

FileHandle::~FileHandle()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

FileHandle::SystemResult<qsizetype> FileHandle::readAtLeast(char *out, qsizetype least,
                                                            qsizetype capacity)
{
    // Some systems refuse a single read of 2 GiB and more.
    constexpr qsizetype largestStep = qsizetype(1) << 30;
    if (const int fault = faultFor(FileOperation::Read, m_path))
        return tl::unexpected(fault);
    qsizetype filled = 0;
    while (filled < least) {
        const size_t step = size_t(std::min(capacity - filled, largestStep));
        const ssize_t got = ::read(m_descriptor, out + filled, step);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return tl::unexpected(errno);
        if (got == 0)
            break;
        filled += got;
    }
    return filled;
}

FileHandle::SystemResult<void> FileHandle::skip(quint64 count)
{
    if (const int fault = faultFor(FileOperation::Read, m_path))
        return tl::unexpected(fault);
    if (::lseek(m_descriptor, off_t(count), SEEK_CUR) < 0)
        return tl::unexpected(errno);
    return {};
}

} // namespace tarnwick::platform
