#include "safety/holding_folder.h"

#include "foundation/dates.h"
#include "foundation/paths.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "platform/folder_lock.h"
#include "safety/store.h"
#include "safety/store_file.h"

#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool isToBePurged(const HeldItem &item, const QDateTime &now)
{
    return !item.restored && item.isExpired(now);
}

/// Makes a folder that is new, and so gives the item its id: that of its number and moment, unless
/// another process or a clock that was put back has given it away before.
Result<QString> makeFolder(const QString &holding, const QList<HeldItem> &items,
                           const QDateTime &date)
{
    if (const Done made = platform::makeFolders(holding, 0700); !made)
        return tl::unexpected(made.error());
    for (qsizetype number = items.size() + 1;; ++number) {
        const QString id = u"held-%1-%2"_s.arg(number).arg(date.toMSecsSinceEpoch() / 1000);
        if (StoreFile::placeOf(items, id) >= 0)
            continue;
        if (const auto isNew = platform::makeNewFolder(joinedPath(holding, id), 0700); !isNew)
            return tl::unexpected(isNew.error());
        else if (*isNew)
            return id;
    }
}

/// Whoever has an item's folder to itself gives its file back or purges it, which nobody waits for.
class ItemLock
{
public:
    explicit ItemLock(const QString &folder)
        : m_lock(folder, platform::FolderLock::Kind::Exclusive, {})
    {}

    bool isHeldByAnother() const { return m_lock.isHeldByAnother(); }

private:
    const platform::FolderLock m_lock;
};

/// Moves the file back, if there still is one.
Done giveBack(const HeldItem &item)
{
    const ItemLock lock(parentFolder(item.heldPath));
    if (lock.isHeldByAnother())
        return tl::unexpected(platform::describeFailure(item.heldPath, u"moved"_s, EBUSY));
    const auto isThere = platform::isPresent(item.heldPath);
    if (!isThere)
        return tl::unexpected(isThere.error());
    if (!*isThere)
        return {};
    if (Done done = platform::makeFolders(parentFolder(item.originalPath)); !done)
        return done;
    return platform::moveWithoutReplacing(item.heldPath, item.originalPath);
}

/// Deletes what is held, as far as that goes. False where it is just given back.
bool purge(const HeldItem &item)
{
    if (!Store::isPlainName(item.id))
        return true;
    const QString folder = joinedPath(Store::holding(), item.id);
    const ItemLock lock(folder);
    if (!lock.isHeldByAnother())
        (void)platform::removeTree(folder);
    return !lock.isHeldByAnother();
}

} // namespace

HoldingFolder::HoldingFolder()
{
    const auto list = StoreFile::load<HeldItem>(Store::holdingManifest());
    m_items = list.records;
    m_manifest = list.state;
}

Result<HeldItem> HoldingFolder::hold(const QString &originalPath, const QString &reason)
{
    const QDateTime date = wholeSeconds(platform::now());
    const auto id = makeFolder(Store::holding(), m_items, date);
    if (!id)
        return tl::unexpected(id.error());
    const QString folder = joinedPath(Store::holding(), *id);
    const QString heldPath = joinedPath(folder, lastPathComponent(originalPath));
    if (const Done moved = platform::moveWithoutReplacing(originalPath, heldPath); !moved) {
        (void)platform::removeEmptyFolder(folder);
        return tl::unexpected(moved.error());
    }
    const HeldItem item{.id = *id,
                        .originalPath = originalPath,
                        .heldPath = heldPath,
                        .reason = reason,
                        .date = date,
                        .expiresAt = calendarDaysLater(date, retentionDays),
                        .restored = false};
    platform::SharedFileWrite manifest(Store::holdingManifest());
    takeIn(manifest);
    m_items.prepend(item);
    write(manifest);
    return item;
}

Done HoldingFolder::restore(const QString &id)
{
    const qsizetype place = StoreFile::placeOf(m_items, id);
    if (place < 0)
        return {};
    // Ahead of the lock: a move between disks may take longer than others wait for that.
    if (Done done = giveBack(m_items.at(place)); !done)
        return done;
    platform::SharedFileWrite manifest(Store::holdingManifest());
    takeIn(manifest);
    m_items[StoreFile::placeOf(m_items, id)].restored = true;
    write(manifest);
    return {};
}

void HoldingFolder::purgeExpired(const QDateTime &now)
{
    platform::SharedFileWrite manifest(Store::holdingManifest());
    takeIn(manifest);
    QList<HeldItem> kept;
    for (const HeldItem &item : std::as_const(m_items)) {
        if (!isToBePurged(item, now) || !purge(item))
            kept.append(item);
    }
    m_items = kept;
    write(manifest);
}

QList<HeldItem> HoldingFolder::activeItems() const
{
    QList<HeldItem> active = m_items;
    active.removeIf([](const HeldItem &item) { return item.restored; });
    return active;
}

int HoldingFolder::count() const
{
    return int(activeItems().size());
}

quint64 HoldingFolder::totalBytes() const
{
    quint64 bytes = 0;
    for (const HeldItem &item : activeItems())
        bytes += platform::factsOf(item.heldPath).value_or(platform::FileFacts()).size;
    return bytes;
}

/// Items that only the manifest has are newer than what this process knew of.
void HoldingFolder::takeIn(const platform::SharedFileWrite &manifest)
{
    const auto content = manifest.contentUnlike(m_manifest);
    const auto others = content ? StoreFile::decoded<HeldItem>(*content) : std::nullopt;
    if (!others)
        return;
    qsizetype added = 0;
    for (const HeldItem &other : others->records) {
        const qsizetype place = StoreFile::placeOf(m_items, other.id);
        if (place < 0)
            m_items.insert(added++, other);
        else if (other.restored)
            m_items[place].restored = true;
    }
}

void HoldingFolder::write(platform::SharedFileWrite &manifest)
{
    QList<QByteArray> texts;
    for (const HeldItem &item : m_items)
        texts.append(StoreFile::encoded(item));
    (void)manifest.write(StoreFile::listOf(texts), m_manifest);
}

} // namespace tarnwick
