#pragma once

#include <QByteArray>
#include <QByteArrayView>

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
    /// All bytes of all parts, in a few system calls however many parts there are.
    int write(std::span<const QByteArrayView> parts);
    int cutToNothing();
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
