#include "platform/files.h"

#include "foundation/paths.h"
#include "platform/fault_gate.h"
#include "platform/file_handle.h"

#include <QDir>

#include <algorithm>
#include <memory>

#include <cerrno>
#include <cstring>

#include <dirent.h>
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

Result<QByteArray> readAllOf(FileHandle &file, const QString &path, quint64 expectedSize)
{
    QByteArray content;
    content.reserve(qsizetype(expectedSize) + 1);
    qsizetype filled = 0;
    for (;;) {
        const qsizetype step = std::max<qsizetype>(qsizetype(expectedSize) + 1 - filled, 65536);
        content.resize(filled + step);
        const auto count = file.read(content.data() + filled, step);
        if (!count)
            return tl::unexpected(describeFailure(path, u"read"_s, count.error()));
        filled += *count;
        if (*count < step)
            break;
    }
    content.resize(filled);
    return content;
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

QString absolutePath(const QString &path)
{
    return standardizedPath(path.startsWith(u'/') ? path : joinedPath(QDir::currentPath(), path));
}

Result<QByteArray> readFile(const QString &path)
{
    auto file = FileHandle::openForReading(path);
    if (!file)
        return tl::unexpected(describeFailure(path, u"opened"_s, file.error()));
    return readAllOf(*file, path, file->size());
}

Result<QStringList> listFolder(const QString &path)
{
    if (const int fault = faultFor(FileOperation::List, path))
        return tl::unexpected(describeFailure(path, u"listed"_s, fault));
    const auto close = [](DIR *folder) { ::closedir(folder); };
    const std::unique_ptr<DIR, decltype(close)> folder(::opendir(path.toUtf8().constData()), close);
    if (!folder)
        return tl::unexpected(describeFailure(path, u"listed"_s, errno));
    QStringList names;
    while (const dirent *entry = ::readdir(folder.get())) {
        const QString name = QString::fromUtf8(entry->d_name);
        if (name != u"."_s && name != u".."_s)
            names.append(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

Failure describeFailure(const QString &path, const QString &doing, int error)
{
    return {u"The file “%1” couldn't be %2: %3."_s.arg(
        lastPathComponent(path), doing, QString::fromLocal8Bit(std::strerror(error)))};
}

} // namespace tarnwick::platform
