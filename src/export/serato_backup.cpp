#include "export/serato_backup.h"

#include "foundation/paths.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "safety/snapshot.h"

#include <algorithm>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoBackup {

namespace {

/// A backup may itself be open as a library: it must not be removed to make room for its own copy.
Done removeEarlier(const QString &backup, const QString &library)
{
    if (platform::liesWithin(library, backup))
        return failure(u"The library itself lies in “%1” — choose another folder."_s.arg(
            lastPathComponent(backup)));
    (void)platform::removeTree(backup); // most often nothing is there; what stays fails the copy
    return {};
}

/// False where the library doesn't have the item. What stands in its place then is left of an
/// earlier backup, and must not pass as copied.
Result<bool> copyEntry(const QString &source, const QString &backup)
{
    auto isThere = platform::isPresent(source);
    if (!isThere)
        return isThere;
    const QString copy = joinedPath(backup, lastPathComponent(source));
    if (!*isThere)
        return platform::removeTree(copy).map([] { return false; });
    // Else a folder would be filled with itself for ever.
    if (platform::liesWithin(backup, source))
        return tl::unexpected(platform::describeFailure(source, u"copied"_s, EINVAL));
    return platform::copyItem(source, copy).map([] { return true; });
}

/// Gives the number of items copied.
Result<int> copyEntries(const QString &library, const QString &backup,
                        const ExportProgressFunction &progress)
{
    const QString phase = u"Copying library files…"_s;
    const QStringList &entries = SnapshotSet::entries();
    const int total = int(entries.size());
    progress({phase, 0, total});
    int written = 0;
    int copied = 0;
    for (const QString &name : entries) {
        ++written;
        const Result<bool> isCopied = copyEntry(joinedPath(library, name), backup);
        if (!isCopied)
            return tl::unexpected(isCopied.error());
        if (!*isCopied)
            continue;
        ++copied;
        progress({phase, written, total});
    }
    return copied;
}

/// 0 where the folder can't be listed.
int crateCountOf(const QString &subcrates)
{
    const QStringList names = platform::listFolder(subcrates).value_or(QStringList());
    const auto isCrate = [&](const QString &name) {
        return pathExtension(name) == u"crate" && !platform::isFolder(joinedPath(subcrates, name));
    };
    return int(std::count_if(names.begin(), names.end(), isCrate));
}

} // namespace

QString backupIn(const QString &folder)
{
    return joinedPath(folder, infoOf(ExportTarget::SeratoBackup).fileName);
}

Result<ExportOutcome> exportTo(const SeratoLibrary::Location &location, const QString &folder,
                               const ExportProgressFunction &progress)
{
    const QString library = location.folderPath();
    const QString backup = backupIn(folder);
    return removeEarlier(backup, library)
        .and_then([&] { return platform::makeFolders(backup); })
        .and_then([&] { return copyEntries(library, backup, progress); })
        .map([&](int copied) {
            return ExportOutcome{ExportTarget::SeratoBackup, backup, copied,
                                 crateCountOf(location.subcratesPath())};
        });
}

} // namespace tarnwick::SeratoBackup
