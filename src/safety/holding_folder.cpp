#include "safety/holding_folder.h"

#include "foundation/dates.h"
#include "foundation/paths.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "safety/store.h"
#include "safety/store_file.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool isPurged(const HeldItem &item, const QDateTime &now)
{
    return !item.restored && item.isExpired(now);
}

/// Moves the file back, if there still is one.
Done giveBack(const HeldItem &item)
{
    const auto isThere = platform::isPresent(item.heldPath);
    if (!isThere)
        return tl::unexpected(isThere.error());
    if (!*isThere)
        return {};
    if (Done done = platform::makeFolders(parentFolder(item.originalPath)); !done)
        return done;
    return platform::moveWithoutReplacing(item.heldPath, item.originalPath);
}

} // namespace

HoldingFolder::HoldingFolder()
    : m_items(StoreFile::load<HeldItem>(Store::holdingManifest()).records)
{}

Result<HeldItem> HoldingFolder::hold(const QString &originalPath, const QString &reason)
{
    const QDateTime date = wholeSeconds(platform::now());
    const QString id = u"held-%1-%2"_s.arg(m_items.size() + 1).arg(date.toMSecsSinceEpoch() / 1000);
    const QString folder = joinedPath(Store::holding(), id);
    const QString heldPath = joinedPath(folder, lastPathComponent(originalPath));
    if (const Done made = platform::makeFolders(folder, 0700); !made)
        return tl::unexpected(made.error());
    if (const Done moved = platform::moveWithoutReplacing(originalPath, heldPath); !moved) {
        (void)platform::removeEmptyFolder(folder);
        return tl::unexpected(moved.error());
    }
    const HeldItem item{.id = id,
                        .originalPath = originalPath,
                        .heldPath = heldPath,
                        .reason = reason,
                        .date = date,
                        .expiresAt = calendarDaysLater(date, retentionDays),
                        .restored = false};
    m_items.prepend(item);
    save();
    return item;
}

Done HoldingFolder::restore(const QString &id)
{
    const auto item = std::find_if(m_items.begin(), m_items.end(),
                                   [&](const HeldItem &held) { return held.id == id; });
    if (item == m_items.end())
        return {};
    if (Done done = giveBack(*item); !done)
        return done;
    item->restored = true;
    save();
    return {};
}

void HoldingFolder::purgeExpired(const QDateTime &now)
{
    const QString holding = Store::holding();
    for (const HeldItem &item : m_items) {
        if (isPurged(item, now) && Store::isPlainName(item.id))
            (void)platform::removeTree(joinedPath(holding, item.id));
    }
    m_items.removeIf([&](const HeldItem &item) { return isPurged(item, now); });
    save();
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

void HoldingFolder::save() const
{
    QList<QByteArray> texts;
    for (const HeldItem &item : m_items)
        texts.append(StoreFile::encoded(item));
    (void)platform::writeFilePlainly(Store::holdingManifest(), StoreFile::listOf(texts));
}

} // namespace tarnwick
