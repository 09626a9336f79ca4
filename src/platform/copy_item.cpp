#include "platform/copy_item.h"

#include "platform/file_attributes.h"
#include "platform/files.h"
#include "platform/open_file.h"
#include "platform/system_calls.h"

#include <cerrno>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

int copyFolder(const QByteArray &source, const QByteArray &destination, const struct stat &status,
               Flush flush, CopyTally *tally)
{
    QByteArrayList names;
    if (const int error = calls::listFolder(source, names))
        return error;
    // Its own permission bits may forbid to fill it, so they come last.
    if (const int error = calls::makeFolder(destination, 0700))
        return error;
    for (const QByteArray &name : names) {
        const QByteArray from = source + '/' + name;
        if (const int error = copyEntry(from, destination + '/' + name, flush, tally))
            return error;
    }
    if (flush == Flush::Yes) {
        if (const int error = calls::flushFolderOf(destination + "/."))
            return error;
    }
    return calls::setMode(destination, status.st_mode & 07777);
}

int copyLink(const QByteArray &source, const QByteArray &destination)
{
    QByteArray target;
    if (const int error = calls::readLink(source, target))
        return error;
    return calls::makeLink(target, destination);
}

/// `size` becomes that of the copy: the source may have grown meanwhile.
int copyFile(const QByteArray &source, const QByteArray &destination, Flush flush, quint64 &size)
{
    const auto from = OpenFile::open(source, O_RDONLY);
    if (!from)
        return from.error();
    struct stat status;
    if (const int error = from->status(status))
        return error;
    auto to = OpenFile::open(destination, O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (!to)
        return to.error();
    if (const int error = to->copyRestOf(*from))
        return error;
    struct stat copied;
    if (const int error = to->status(copied))
        return error;
    size = quint64(copied.st_size);
    if (const int error = takeOverAttributes(*from, status, *to))
        return error;
    if (const int error = takeOverTimes(status, *to))
        return error;
    if (flush == Flush::Yes) {
        if (const int error = to->flush())
            return error;
    }
    return to->close();
}

} // namespace

int copyEntry(const QByteArray &source, const QByteArray &destination, Flush flush,
              CopyTally *tally)
{
    struct stat status;
    if (const int error = calls::statusOf(source, status))
        return error;
    if (S_ISDIR(status.st_mode))
        return copyFolder(source, destination, status, flush, tally);
    quint64 size = quint64(status.st_size);
    const int error = S_ISLNK(status.st_mode)   ? copyLink(source, destination)
                      : S_ISREG(status.st_mode) ? copyFile(source, destination, flush, size)
                                                : calls::makeSpecial(destination, status);
    if (error == 0 && tally) {
        ++tally->files;
        tally->bytes += size;
    }
    return error;
}

Done copyItem(const QString &source, const QString &destination, CopyTally *tally)
{
    if (const int error = copyEntry(source.toUtf8(), destination.toUtf8(), Flush::No, tally))
        return tl::unexpected(describeFailure(source, u"copied"_s, error));
    return {};
}

} // namespace tarnwick::platform
