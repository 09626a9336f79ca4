#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace tarnwick::platform {

/// An open regular file, closed with the handle. The thin layer under `files`, for code that reads
/// many files in a row. Failures are errno values.
class FileHandle
{
public:
    template <typename T>
    using SystemResult = tl::expected<T, int>;

    /// Opens for reading, links followed. Anything but a regular file is refused without waiting
    /// (a pipe with no writer, say): EISDIR for a folder, EINVAL for the rest.
    static SystemResult<FileHandle> openForReading(const QString &path);

    /// The same for a path that `factsOf` has just called a regular file: leaves out asking the
    /// system again. Never waits either. `size()` is 0.
    static SystemResult<FileHandle> openKnownRegular(const QString &path);

    FileHandle(FileHandle &&other) noexcept;
    FileHandle &operator=(FileHandle &&other) noexcept;
    FileHandle(const FileHandle &) = delete;
    FileHandle &operator=(const FileHandle &) = delete;
    ~FileHandle();

    /// Size at the time of opening, in bytes; 0 if it was not asked for.
    quint64 size() const { return m_size; }

    /// Up to `count` bytes from where the last read ended; fewer only at the end of the file.
    SystemResult<qsizetype> read(char *out, qsizetype count)
    {
        return readAtLeast(out, count, count);
    }

    /// At least `least` bytes, fewer only at the end of the file, and up to `capacity` where the
    /// system gives them in the same call.
    SystemResult<qsizetype> readAtLeast(char *out, qsizetype least, qsizetype capacity);

    /// Goes on as many bytes further without reading them.
    SystemResult<void> skip(quint64 count);

private:
    FileHandle(int descriptor, quint64 size, const QString &path)
        : m_descriptor(descriptor)
        , m_size(size)
        , m_path(path)
    {}

    int m_descriptor = -1;
    quint64 m_size = 0;
    QString m_path;
};

} // namespace tarnwick::platform
