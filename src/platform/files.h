#pragma once

#include "foundation/result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// Reading what lies on disk. Every failure carries a sentence for the user. Paths are text in the
/// system's UTF-8. Nothing here opens a folder, socket, device or pipe: only regular files are
/// read.
namespace tarnwick::platform {

/// What the file system says of a path, links followed.
struct FileFacts
{
    enum class Kind { Regular, Folder, Other };

    Kind kind = Kind::Other;
    quint64 size = 0; ///< bytes; of the target where the path is a link
};

/// Nothing if the path leads nowhere or can't be reached, a path that holds NUL included.
std::optional<FileFacts> factsOf(const QString &path);

/// True where anything leads to, links followed.
bool exists(const QString &path);
/// Whether an entry stands at the path, a dangling link too. Unlike the rest, a failure to find out
/// is no "no": for callers that take something away or leave it out because of the answer.
Result<bool> isPresent(const QString &path);
bool isFolder(const QString &path);
bool isRegularFile(const QString &path);
/// Whether the item at the path is the folder or lies in it, at any depth, links followed. False if
/// either isn't there.
bool liesWithin(const QString &path, const QString &folder);

/// A path made absolute against the working directory, "." and ".." removed; links stay.
QString absolutePath(const QString &path);

/// Where a path leads once all links on the way are followed; nothing if that is nowhere.
std::optional<QString> canonicalPath(const QString &path);

/// The whole content of a regular file.
Result<QByteArray> readFile(const QString &path);

/// The names of a folder's entries, hidden ones included, in name order, without "." and "..".
Result<QStringList> listFolder(const QString &path);

/// "The file “name” couldn't be {doing}: {reason}." for an errno value.
Failure describeFailure(const QString &path, const QString &doing, int error);

} // namespace tarnwick::platform
