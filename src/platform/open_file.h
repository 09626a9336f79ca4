#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <chrono>
#include <optional>
#include <span>

#include <sys/stat.h>
#include <tl/expected.hpp>

namespace tarnwick::platform {

/// An open file of any kind, closed with the object. An int answered is 0 or the errno value. Every
/// call passes the fault gate.
class OpenFile
{
public:
    /// `flags` and `mode` as open(2) takes them; never waits for a pipe's other end.
    static tl::expected<OpenFile, int> open(const QByteArray &path, int flags, mode_t mode = 0);

    OpenFile(OpenFile &&other) noexcept;
    OpenFile &operator=(OpenFile &&other) noexcept;
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile();

    int descriptor() const { return m_descriptor; }
    const QByteArray &path() const { return m_path; }

    int status(struct stat &status) const;
    /// The system's advisory lock, held until every descriptor of this opening is closed.
    /// EWOULDBLOCK where another opening has kept it for so long; other errors where it can't be
    /// had at all.
    enum class Lock { Shared, Exclusive };
    int lock(Lock kind, std::chrono::milliseconds patience) const;
    /// From where the file stands to its end.
    int readRest(QByteArray &content) const;
    /// All bytes of all parts, in a few system calls however many parts there are.
    int write(std::span<const QByteArrayView> parts);
    /// All parts in the place of all that is there. ENOSPC, and nothing done, where the file system
    /// says that it has no room for them; one that doesn't say is taken to have it.
    int overwrite(std::span<const QByteArrayView> parts);
    /// Another descriptor of the same opening; nothing where the system has none to give.
    std::optional<OpenFile> duplicate() const;
    /// Up to the device itself, past its cache where the system can ask for that.
    int flush();
    /// Closes ahead of time: some file systems tell only now that a write has failed.
    int close();
    /// All that is left to read in `source`, inside the kernel where it can.
    int copyRestOf(const OpenFile &source);

private:
    OpenFile(int descriptor, const QByteArray &path)
        : m_descriptor(descriptor)
        , m_path(path)
    {}

    int m_descriptor = -1;
    QByteArray m_path;
};

} // namespace tarnwick::platform
