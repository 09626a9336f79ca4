#pragma once

#include "foundation/result.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <memory>
#include <optional>
#include <span>

#include <sys/types.h>

/// Files of this program's own that several of its processes read and write over in place: a window
/// and command lines beside it.
///
/// 1. Who reads or writes holds the system's lock on the file itself meanwhile, so that nobody sees
///    the half of what another writes. The lock goes with its process, however that ends.
/// 2. A writer is told first what another has written since, so that it can take that in.
/// 3. Nobody waits for ever: what can't be locked within two seconds, or at all, is read and
///    written without.
/// 4. What no room is left for leaves the file as it was. Else a write is as `writeFilePlainly` has
///    it: neither atomic nor flushed.
namespace tarnwick::platform {

/// Tells one state of a file from another without reading it. That of no file is its default.
struct FileState
{
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    qint64 changedSeconds = 0;
    qint64 changedNanoseconds = 0;

    bool operator==(const FileState &) const = default;
};

/// The whole content of a regular file, and its state then. After a failure `state` is as before:
/// what nobody has read, the next write takes in.
Result<QByteArray> readSharedFile(const QString &path, FileState &state);

/// One write, from the moment at which nobody else reads or writes the file to its end.
class SharedFileWrite
{
public:
    /// Makes the file where there is none. `mode` sets its permission bits. What fails is told by
    /// `write`.
    explicit SharedFileWrite(const QString &path, std::optional<mode_t> mode = std::nullopt);
    ~SharedFileWrite();
    SharedFileWrite(const SharedFileWrite &) = delete;
    SharedFileWrite &operator=(const SharedFileWrite &) = delete;

    /// What stands in the file, where that is another state than the one that is known.
    std::optional<QByteArray> contentUnlike(const FileState &known) const;

    /// Puts the joined parts in the place of all that is there; `state` becomes that of the file.
    Done write(std::span<const QByteArrayView> parts, FileState &state);
    Done write(QByteArrayView content, FileState &state);

private:
    struct Opened;

    const QString m_path;
    std::unique_ptr<Opened> m_opened; ///< null where `m_error` tells why
    int m_error = 0;
};

} // namespace tarnwick::platform
