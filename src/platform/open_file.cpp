#include "platform/open_file.h"

#include "platform/system_calls.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <numeric>
#include <thread>
#include <utility>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/statvfs.h>
#include <sys/uio.h>
#include <unistd.h>

namespace tarnwick::platform {

namespace {

/// Some systems refuse a single transfer of 2 GiB and more.
constexpr size_t largestTransfer = size_t(1) << 30;
/// As many pieces as every system takes in one call.
constexpr size_t piecesPerCall = 1024;

/// The pieces that are still to be written, handed out a call's worth at a time.
class PendingPieces
{
public:
    explicit PendingPieces(std::span<const QByteArrayView> parts)
        : m_parts(parts)
    {}

    std::span<const iovec> next()
    {
        size_t count = 0;
        size_t bytes = 0;
        for (size_t i = m_part; i < m_parts.size() && count < piecesPerCall; ++i) {
            const size_t skipped = i == m_part ? m_offset : 0;
            const size_t left = size_t(m_parts[i].size()) - skipped;
            const size_t taken = std::min(left, largestTransfer - bytes);
            if (taken > 0)
                m_pieces[count++] = {const_cast<char *>(m_parts[i].data()) + skipped, taken};
            bytes += taken;
            if (taken < left)
                break;
        }
        return {m_pieces.data(), count};
    }

    void advance(size_t written)
    {
        while (m_part < m_parts.size()) {
            const size_t left = size_t(m_parts[m_part].size()) - m_offset;
            if (written < left)
                break;
            written -= left;
            m_offset = 0;
            ++m_part;
        }
        m_offset += written;
    }

private:
    std::span<const QByteArrayView> m_parts;
    std::array<iovec, piecesPerCall> m_pieces;
    size_t m_part = 0;
    size_t m_offset = 0; ///< bytes of the first pending part that are written
};

bool isTransferUnsupported(int error)
{
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP ||
           error == EPERM;
}

/// Copies inside the kernel. `done` stays false where the rest must be pumped: the kernel can't go
/// on, or claims that there is nothing to transfer, as some file systems do.
int transferRest([[maybe_unused]] const OpenFile &source, [[maybe_unused]] const OpenFile &target,
                 [[maybe_unused]] bool &done)
{
#ifdef Q_OS_LINUX
    for (;;) {
        if (const int fault = calls::gate(FileOperation::Copy, target.path()))
            return isTransferUnsupported(fault) ? 0 : fault;
        const ssize_t copied = ::copy_file_range(source.descriptor(), nullptr, target.descriptor(),
                                                 nullptr, largestTransfer, 0);
        if (copied == 0)
            return 0;
        if (copied < 0 && isTransferUnsupported(errno))
            done = false;
        if (copied < 0 && errno != EINTR)
            return isTransferUnsupported(errno) ? 0 : errno;
        done = copied > 0 || done;
    }
#else
    return 0;
#endif
}

/// Copies through a buffer.
int pumpRest(const OpenFile &source, OpenFile &target)
{
    constexpr size_t bufferSize = size_t(256) * 1024;
    const auto buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
    for (;;) {
        if (const int fault = calls::gate(FileOperation::Read, source.path()))
            return fault;
        const ssize_t got = ::read(source.descriptor(), buffer.get(), bufferSize);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return errno;
        if (got == 0)
            return 0;
        const QByteArrayView piece(buffer.get(), got);
        if (const int error = target.write(std::span(&piece, 1)))
            return error;
    }
}

quint64 sizeOf(std::span<const QByteArrayView> parts)
{
    const auto add = [](quint64 sum, QByteArrayView part) { return sum + quint64(part.size()); };
    return std::accumulate(parts.begin(), parts.end(), quint64(0), add);
}

/// What the file has now counts as room.
bool hasRoomFor(int descriptor, quint64 bytes)
{
    constexpr quint64 statusBlock = 512;
    struct statvfs system;
    struct stat file;
    if (::fstatvfs(descriptor, &system) != 0 || ::fstat(descriptor, &file) != 0 ||
        system.f_blocks == 0)
        return true;
    const quint64 free = ::geteuid() == 0 ? system.f_bfree : system.f_bavail;
    return free * system.f_frsize + quint64(file.st_blocks) * statusBlock >= bytes;
}

} // namespace

tl::expected<OpenFile, int> OpenFile::open(const QByteArray &path, int flags, mode_t mode)
{
    if (const int fault = calls::gate(FileOperation::Open, path))
        return tl::unexpected(fault);
    int descriptor = -1;
    do
        descriptor = ::open(path.constData(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0)
        return tl::unexpected(errno);
    return OpenFile(descriptor, path);
}

OpenFile::OpenFile(OpenFile &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_path(std::move(other.m_path))
{}

OpenFile &OpenFile::operator=(OpenFile &&other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_path, other.m_path);
    return *this;
}

OpenFile::~OpenFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

int OpenFile::status(struct stat &status) const
{
    if (const int fault = calls::gate(FileOperation::Stat, m_path))
        return fault;
    return ::fstat(m_descriptor, &status) == 0 ? 0 : errno;
}

int OpenFile::lock(Lock kind, std::chrono::milliseconds patience) const
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause(2);
    const auto end = Clock::now() + patience;
    const int operation = (kind == Lock::Shared ? LOCK_SH : LOCK_EX) | LOCK_NB;
    while (::flock(m_descriptor, operation) != 0) {
        if (errno != EINTR && errno != EWOULDBLOCK)
            return errno;
        if (Clock::now() >= end)
            return EWOULDBLOCK;
        std::this_thread::sleep_for(pause);
    }
    return 0;
}

int OpenFile::readRest(QByteArray &content) const
{
    struct stat status;
    if (const int error = this->status(status))
        return error;
    constexpr qsizetype furtherStep = 65536;
    try {
        // One byte more than there should be, so that the end shows in the first read.
        for (qsizetype step = qsizetype(status.st_size) + 1;; step = furtherStep) {
            const qsizetype filled = content.size();
            content.resize(filled + step);
            if (const int fault = calls::gate(FileOperation::Read, m_path))
                return fault;
            const ssize_t got = ::read(m_descriptor, content.data() + filled, size_t(step));
            const int error = errno;
            content.truncate(filled + std::max<ssize_t>(got, 0));
            if (got == 0)
                return 0;
            if (got < 0 && error != EINTR)
                return error;
        }
    } catch (const std::bad_alloc &) {
        return ENOMEM;
    }
}

int OpenFile::write(std::span<const QByteArrayView> parts)
{
    PendingPieces pending(parts);
    for (auto pieces = pending.next(); !pieces.empty(); pieces = pending.next()) {
        if (const int fault = calls::gate(FileOperation::Write, m_path))
            return fault;
        const ssize_t written = ::writev(m_descriptor, pieces.data(), int(pieces.size()));
        if (written >= 0)
            pending.advance(size_t(written));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

int OpenFile::overwrite(std::span<const QByteArrayView> parts)
{
    if (!hasRoomFor(m_descriptor, sizeOf(parts)))
        return ENOSPC;
    if (const int fault = calls::gate(FileOperation::Write, m_path))
        return fault;
    if (::ftruncate(m_descriptor, 0) != 0 || ::lseek(m_descriptor, 0, SEEK_SET) != 0)
        return errno;
    return write(parts);
}

std::optional<OpenFile> OpenFile::duplicate() const
{
    const int descriptor = ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0);
    return descriptor < 0 ? std::nullopt : std::optional(OpenFile(descriptor, m_path));
}

int OpenFile::flush()
{
    if (const int fault = calls::gate(FileOperation::Flush, m_path))
        return fault;
#ifdef Q_OS_MACOS
    if (::fcntl(m_descriptor, F_FULLFSYNC) == 0)
        return 0;
#endif
    return ::fsync(m_descriptor) == 0 ? 0 : errno;
}

int OpenFile::close()
{
    // The descriptor is gone even where a signal broke the call off.
    const int result = ::close(std::exchange(m_descriptor, -1));
    return result == 0 || errno == EINTR ? 0 : errno;
}

int OpenFile::copyRestOf(const OpenFile &source)
{
    bool done = false;
    if (const int error = transferRest(source, *this, done))
        return error;
    return done ? 0 : pumpRest(source, *this);
}

} // namespace tarnwick::platform
