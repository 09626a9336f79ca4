#include "safety/snapshot_store.h"

#include "foundation/dates.h"
#include "foundation/paths.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "platform/folder_lock.h"
#include "safety/store.h"
#include "safety/store_file.h"

#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::SnapshotStore {

namespace {

constexpr mode_t ownerOnly = 0700;

/// Local time to the millisecond, in digits that no locale changes. Alone tells snapshots apart.
QString isoStamp(const QDateTime &moment)
{
    return moment.toLocalTime().toString(u"yyyyMMdd-HHmmss-zzz"_s);
}

QString metaPath(const QString &folder)
{
    return joinedPath(folder, u"meta.json"_s);
}

/// Makes a folder that is new, and so gives the snapshot its id. Waits where another snapshot of
/// this very millisecond exists.
Result<QString> makeFolder(const QString &snapshots)
{
    // Where the data folder can't be made, that is the cause to tell.
    if (!platform::exists(snapshots)) {
        if (const Done made = platform::makeFolders(snapshots, ownerOnly); !made)
            return tl::unexpected(made.error());
    }
    QDateTime moment = platform::now();
    for (;;) {
        const QString id = u"snap-"_s + isoStamp(moment);
        const auto isNew = platform::makeNewFolder(joinedPath(snapshots, id), ownerOnly);
        if (!isNew)
            return tl::unexpected(isNew.error());
        if (*isNew)
            return id;
        QThread::msleep(1);
        moment = std::max(platform::now(), moment.addMSecs(1));
    }
}

/// Copies the library's items into the snapshot's folder and counts them. Items that don't exist
/// are no failure; not being able to find out is one.
Done copyItems(const QString &library, const QString &folder, Snapshot &snapshot)
{
    platform::CopyTally tally;
    for (const QString &name : SnapshotSet::entries()) {
        const QString source = joinedPath(library, name);
        const auto isThere = platform::isPresent(source);
        if (!isThere)
            return tl::unexpected(isThere.error());
        if (!*isThere)
            continue;
        if (Done done = platform::copyItem(source, joinedPath(folder, name), &tally); !done)
            return done;
    }
    snapshot.fileCount = tally.files;
    snapshot.byteSize = tally.bytes;
    return {};
}

Done writeMeta(const Snapshot &snapshot, const QString &folder)
{
    QByteArray file;
    JsonWriter json(file, JsonWriter::Style::Pretty);
    snapshot.write(json);
    file.append('\n');
    return platform::writeFilePlainly(metaPath(folder), file);
}

Done fill(Snapshot &snapshot, const QString &folder)
{
    if (Done done = copyItems(snapshot.sourcePath, folder, snapshot); !done)
        return done;
    snapshot.date = wholeSeconds(platform::now());
    return writeMeta(snapshot, folder);
}

/// The record goes first: without it, what is left of the folder is no snapshot. So no half of one
/// is ever listed, however far the removal comes.
void discard(const QString &folder)
{
    if (platform::removeTree(metaPath(folder)))
        (void)platform::removeTree(folder);
}

Failure copyFailed(const Failure &cause)
{
    return {u"Snapshot failed: %1"_s.arg(cause.message)};
}

std::optional<Snapshot> readMeta(const QString &folder)
{
    const QByteArray file = StoreFile::read(metaPath(folder));
    JsonReader json(file);
    Snapshot snapshot;
    if (!Snapshot::read(json, snapshot) || !json.end())
        return std::nullopt;
    return snapshot;
}

Done restoreItem(const QString &source, const QString &destination)
{
    const auto isThere = platform::isPresent(source);
    if (!isThere)
        return tl::unexpected(isThere.error());
    return *isThere ? platform::replaceItem(source, destination) : Done();
}

} // namespace

Result<Snapshot> create(const SeratoLibrary::Location &location, const QString &reason)
{
    if (!platform::exists(location.databasePath()))
        return failure(u"No Serato database found at that location."_s);
    const QString snapshots = Store::snapshots();
    const auto id = makeFolder(snapshots);
    if (!id)
        return tl::unexpected(copyFailed(id.error()));
    Snapshot snapshot;
    snapshot.id = *id;
    snapshot.reason = reason;
    snapshot.sourcePath = location.folderPath();
    const QString folder = joinedPath(snapshots, *id);
    // What another process is about to put in its place is neither here nor there.
    const platform::FolderLock lock(snapshot.sourcePath, platform::FolderLock::Kind::Shared);
    if (const Done done = fill(snapshot, folder); !done) {
        discard(folder);
        return tl::unexpected(copyFailed(done.error()));
    }
    return snapshot;
}

QList<Snapshot> list()
{
    const QString snapshots = Store::snapshots();
    QList<Snapshot> found;
    for (const QString &name : platform::listFolder(snapshots).value_or(QStringList())) {
        if (auto snapshot = readMeta(joinedPath(snapshots, name)))
            found.append(std::move(*snapshot));
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Snapshot &a, const Snapshot &b) { return a.date > b.date; });
    return found;
}

Done restore(const Snapshot &snapshot, const SeratoLibrary::Location &location)
{
    if (SeratoLibrary::isSeratoRunning())
        return failure(u"Serato is running — close it before taking a snapshot."_s);
    (void)create(location, u"Before rollback to %1"_s.arg(snapshot.shortDate()));
    if (!Store::isPlainName(snapshot.id))
        return {};
    const platform::FolderLock lock(location.folderPath(), platform::FolderLock::Kind::Exclusive);
    for (const QString &name : SnapshotSet::entries()) {
        if (Done done = restoreItem(joinedPath(snapshot.folderPath(), name),
                                    joinedPath(location.folderPath(), name));
            !done)
            return done;
    }
    return {};
}

void remove(const Snapshot &snapshot)
{
    if (Store::isPlainName(snapshot.id))
        discard(snapshot.folderPath());
}

quint64 totalBytes()
{
    quint64 bytes = 0;
    for (const Snapshot &snapshot : list())
        bytes += snapshot.byteSize;
    return bytes;
}

} // namespace tarnwick::SnapshotStore
