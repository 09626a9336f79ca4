#include "platform/shared_file.h"

#include "platform/files.h"
#include "platform/open_file.h"
#include "platform/system_calls.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

constexpr std::chrono::milliseconds patience(2000);

FileState stateOf(const struct stat &status)
{
#ifdef Q_OS_MACOS
    const timespec &changed = status.st_mtimespec;
#else
    const timespec &changed = status.st_mtim;
#endif
    return {status.st_dev, status.st_ino, status.st_size, changed.tv_sec, changed.tv_nsec};
}

/// EINVAL for anything but a regular file.
int statusOfRegular(const OpenFile &file, struct stat &status)
{
    if (const int error = file.status(status))
        return error;
    return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

int readWhole(const QByteArray &path, QByteArray &content, FileState &state)
{
    const auto file = OpenFile::open(path, O_RDONLY);
    if (!file)
        return file.error();
    struct stat status;
    if (const int error = statusOfRegular(*file, status))
        return error;
    (void)file->lock(OpenFile::Lock::Shared, patience);
    if (const int error = file->status(status))
        return error;
    if (const int error = file->readRest(content))
        return error;
    state = stateOf(status);
    return 0;
}

tl::expected<OpenFile, int> openForWriting(const QByteArray &path, std::optional<mode_t> mode)
{
    auto file = OpenFile::open(path, O_RDWR | O_CREAT, mode.value_or(0666));
    if (!file)
        return file;
    struct stat status;
    if (const int error = statusOfRegular(*file, status))
        return tl::unexpected(error);
    if (mode && (status.st_mode & 07777) != *mode) {
        if (const int error = calls::setMode(path, *mode))
            return tl::unexpected(error);
    }
    (void)file->lock(OpenFile::Lock::Exclusive, patience);
    return file;
}

} // namespace

struct SharedFileWrite::Opened
{
    OpenFile file;
};

Result<QByteArray> readSharedFile(const QString &path, FileState &state)
{
    QByteArray content;
    if (const int error = readWhole(path.toUtf8(), content, state))
        return tl::unexpected(describeFailure(path, u"read"_s, error));
    return content;
}

SharedFileWrite::SharedFileWrite(const QString &path, std::optional<mode_t> mode)
    : m_path(path)
{
    if (auto file = openForWriting(path.toUtf8(), mode))
        m_opened.reset(new Opened{std::move(*file)});
    else
        m_error = file.error();
}

SharedFileWrite::~SharedFileWrite() = default;

std::optional<QByteArray> SharedFileWrite::contentUnlike(const FileState &known) const
{
    struct stat status;
    if (!m_opened || m_opened->file.status(status) != 0 || status.st_size == 0 ||
        stateOf(status) == known)
        return std::nullopt;
    QByteArray content;
    if (m_opened->file.readRest(content) != 0)
        return std::nullopt;
    return content;
}

Done SharedFileWrite::write(std::span<const QByteArrayView> parts, FileState &state)
{
    int error = m_error;
    if (error == 0)
        error = m_opened->file.overwrite(parts);
    struct stat status;
    if (error == 0 && ::fstat(m_opened->file.descriptor(), &status) == 0)
        state = stateOf(status);
    if (error == 0)
        error = m_opened->file.close();
    if (error != 0)
        return tl::unexpected(describeFailure(m_path, u"written"_s, error));
    return {};
}

Done SharedFileWrite::write(QByteArrayView content, FileState &state)
{
    return write(std::span(&content, 1), state);
}

} // namespace tarnwick::platform
