#include "platform/files.h"

#include "foundation/paths.h"
#include "foundation/utf8.h"
#include "platform/fault_gate.h"
#include "platform/file_handle.h"
#include "platform/system_calls.h"

#include <QDir>

#include <algorithm>
#include <memory>
#include <new>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

FileFacts::Kind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return FileFacts::Kind::Regular;
    return S_ISDIR(mode) ? FileFacts::Kind::Folder : FileFacts::Kind::Other;
}

/// Reads until the end, wherever the file's size said that it would be.
Result<QByteArray> readAllOf(FileHandle &file, const QString &path)
{
    constexpr qsizetype furtherStep = 65536;
    QByteArray content;
    // One byte more than there should be, so that the end shows in the first read.
    qsizetype step = qsizetype(file.size()) + 1;
    content.reserve(step);
    for (;; step = furtherStep) {
        const qsizetype filled = content.size();
        content.resize(filled + step);
        const auto count = file.read(content.data() + filled, step);
        if (!count)
            return tl::unexpected(describeFailure(path, u"read"_s, count.error()));
        content.truncate(filled + *count);
        if (*count < step)
            return content;
    }
}

} // namespace

std::optional<FileFacts> factsOf(const QString &path)
{
    if (path.contains(QChar::Null) || faultFor(FileOperation::Stat, path) != 0)
        return std::nullopt;
    struct stat status;
    if (::stat(path.toUtf8().constData(), &status) != 0)
        return std::nullopt;
    return FileFacts{kindOf(status.st_mode), quint64(status.st_size)};
}

Result<bool> isPresent(const QString &path)
{
    struct stat status;
    const int error = calls::statusOf(path.toUtf8(), status);
    if (error == 0)
        return true;
    if (error == ENOENT || error == ENOTDIR)
        return false;
    return tl::unexpected(describeFailure(path, u"found"_s, error));
}

bool exists(const QString &path)
{
    return factsOf(path).has_value();
}

bool isFolder(const QString &path)
{
    const auto facts = factsOf(path);
    return facts && facts->kind == FileFacts::Kind::Folder;
}

bool isRegularFile(const QString &path)
{
    const auto facts = factsOf(path);
    return facts && facts->kind == FileFacts::Kind::Regular;
}

bool liesWithin(const QString &path, const QString &folder)
{
    struct stat wanted;
    struct stat status;
    const std::optional<QString> place = canonicalPath(path);
    if (!place || ::stat(folder.toUtf8().constData(), &wanted) != 0)
        return false;
    // By identity: the same folder may go by names that differ in letter case.
    const auto isWanted = [&](const char *item) {
        return ::stat(item, &status) == 0 && status.st_dev == wanted.st_dev &&
               status.st_ino == wanted.st_ino;
    };
    QByteArray item = place->toUtf8();
    while (!item.isEmpty() && !isWanted(item.constData()))
        item.truncate(item.lastIndexOf('/'));
    return !item.isEmpty() || isWanted("/");
}

QString absolutePath(const QString &path)
{
    return standardizedPath(path.startsWith(u'/') ? path : joinedPath(QDir::currentPath(), path));
}

std::optional<QString> canonicalPath(const QString &path)
{
    if (path.contains(QChar::Null) || faultFor(FileOperation::Stat, path) != 0)
        return std::nullopt;
    const std::unique_ptr<char, decltype(&std::free)> found(
        ::realpath(path.toUtf8().constData(), nullptr), &std::free);
    return found ? std::optional(QString::fromUtf8(found.get())) : std::nullopt;
}

Result<QByteArray> readFile(const QString &path)
{
    auto file = FileHandle::openForReading(path);
    if (!file)
        return tl::unexpected(describeFailure(path, u"opened"_s, file.error()));
    try {
        return readAllOf(*file, path);
    } catch (const std::bad_alloc &) {
        return tl::unexpected(describeFailure(path, u"read"_s, ENOMEM));
    }
}

Result<QStringList> listFolder(const QString &path)
{
    QByteArrayList entries;
    if (const int error = calls::listFolder(path.toUtf8(), entries))
        return tl::unexpected(describeFailure(path, u"listed"_s, error));
    QStringList names;
    names.reserve(entries.size());
    for (const QByteArray &entry : entries)
        names.append(decodeUtf8(entry));
    std::sort(names.begin(), names.end());
    return names;
}

namespace {

/// The system's words; there are two functions of one name, and either writes into the buffer or
/// tells of another place.
[[maybe_unused]] const char *words(const char *told, const char *)
{
    return told;
}

[[maybe_unused]] const char *words(int, const char *buffer)
{
    return buffer;
}

} // namespace

Failure describeFailure(const QString &path, const QString &doing, int error)
{
    char buffer[256] = {};
    const char *const reason = words(::strerror_r(error, buffer, sizeof buffer), buffer);
    return {u"The file “%1” couldn't be %2: %3."_s.arg(lastPathComponent(path), doing,
                                                       QString::fromLocal8Bit(reason))};
}

} // namespace tarnwick::platform
