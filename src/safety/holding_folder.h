#pragma once

#include "foundation/result.h"
#include "platform/shared_file.h"
#include "safety/held_item.h"

#include <QList>

namespace tarnwick {

/// Keeps the files that commands take out of a library, for 30 days.
///
/// 1. A file is moved, never copied and never deleted; a move overwrites nothing. At every moment
///    it is whole in its place or whole in holding.
/// 2. Each file lies in a folder of its own, so that no two of one name collide.
/// 3. The file moves first, then the manifest is written; a write that fails is ignored. Nobody
///    purges a file that the manifest doesn't know.
/// 4. Only a purge destroys a file, and only one that is not restored and whose days have ended.
///    Restored items stay in the manifest for good.
///
/// 5. What another process has held or given back meanwhile is taken in ahead of each write of the
///    manifest, so that it loses nothing of it.
///
/// Lives on the main thread. Reads its manifest when it is made.
class HoldingFolder
{
public:
    static constexpr int retentionDays = 30;

    HoldingFolder();

    /// Newest first, restored ones included.
    const QList<HeldItem> &items() const { return m_items; }

    /// Takes a file out of its place. A failure is the file system's, and leaves everything as it
    /// was. Does not ask first whether the file exists: the move fails by itself.
    Result<HeldItem> hold(const QString &originalPath, const QString &reason);
    /// Moves a file back, also past its date. An item whose held file has gone is marked as
    /// restored all the same, so that it doesn't stay in the list for ever. An unknown id is no
    /// failure.
    Done restore(const QString &id);
    /// Removes what has expired, file and record. For the launch alone.
    void purgeExpired(const QDateTime &now = platform::now());

    /// Those that are not restored.
    QList<HeldItem> activeItems() const;
    int count() const;
    /// Of the files of the active items, in bytes; one that can't be looked at counts as 0.
    quint64 totalBytes() const;

private:
    void takeIn(const platform::SharedFileWrite &manifest);
    void write(platform::SharedFileWrite &manifest);

    QList<HeldItem> m_items;
    platform::FileState m_manifest; ///< as last read or written
};

} // namespace tarnwick
