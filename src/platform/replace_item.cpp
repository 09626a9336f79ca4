#include "platform/copy_item.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "platform/remove_tree.h"
#include "platform/system_calls.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

/// The first name beside the destination that nothing bears: what an earlier run left behind when
/// it was ended half way must neither be touched nor stand in the way.
int freeTemporaryBeside(const QByteArray &destination, QByteArray &temporary)
{
    constexpr int mostLeftBehind = 1000;
    const QByteArray first = calls::temporaryBeside(destination);
    for (int number = 1; number < mostLeftBehind; ++number) {
        temporary = number == 1 ? first : first + QByteArray::number(number);
        struct stat status;
        if (const int error = calls::statusOf(temporary, status))
            return error == ENOENT ? 0 : error;
    }
    return EEXIST;
}

/// Where the file system can't let two entries change places: the old one steps aside first.
int stepAside(const QByteArray &copy, const QByteArray &destination)
{
    QByteArray aside;
    if (const int error = freeTemporaryBeside(destination, aside))
        return error;
    if (const int error = calls::renameEntry(destination, aside))
        return error;
    if (const int error = calls::renameEntry(copy, destination)) {
        calls::renameEntry(aside, destination);
        return error;
    }
    return calls::renameEntry(aside, copy);
}

/// Lets the copy and what stands at the destination change places; `copy` then names the old one.
int changePlaces(const QByteArray &copy, const QByteArray &destination)
{
    const int error = calls::exchangeEntries(copy, destination);
    const bool isUnknownHere = error == EINVAL || error == ENOSYS || error == ENOTSUP;
    return isUnknownHere ? stepAside(copy, destination) : error;
}

/// `isOldLeft` tells whether the old item now bears the copy's name.
int putInPlace(const QByteArray &copy, const QByteArray &destination, bool &isOldLeft)
{
    struct stat standing;
    const int absent = calls::statusOf(destination, standing);
    if (absent != 0 && absent != ENOENT)
        return absent;
    struct stat coming;
    if (const int error = calls::statusOf(copy, coming))
        return error;
    if (absent == ENOENT || (!S_ISDIR(standing.st_mode) && !S_ISDIR(coming.st_mode)))
        return calls::renameEntry(copy, destination);
    const int error = changePlaces(copy, destination);
    isOldLeft = error == 0;
    return error;
}

int replaceWhole(const QByteArray &source, const QByteArray &destination)
{
    QByteArray copy;
    if (const int error = freeTemporaryBeside(destination, copy))
        return error;
    bool isOldLeft = false;
    int error = copyEntry(source, copy, Flush::Yes);
    if (error == 0)
        error = putInPlace(copy, destination, isOldLeft);
    if (error != 0) {
        removeWhole(copy);
        return error;
    }
    calls::flushFolderOf(destination);
    return isOldLeft ? removeWhole(copy) : 0;
}

} // namespace

Done replaceItem(const QString &source, const QString &destination)
{
    if (const int error = replaceWhole(source.toUtf8(), destination.toUtf8()))
        return tl::unexpected(describeFailure(destination, u"replaced"_s, error));
    return {};
}

} // namespace tarnwick::platform
