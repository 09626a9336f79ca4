#pragma once

#include "safety/change_entry.h"
#include "safety/preloaded.h"
#include "safety/store_file.h"

#include <QList>

#include <functional>

namespace tarnwick {

/// What this program has done to the user's libraries, newest first, in "changelog.json".
///
/// 1. Entries are added at the front and never removed; nothing of one changes but `reversed`.
/// 2. Each change writes the whole file anew. A write that fails is ignored: the change that the
///    entry tells of has already happened, and a later write catches up.
/// 3. A file that can't be read as a whole starts an empty log, and stays until the next write.
/// 4. What another process has added or marked meanwhile is taken in ahead of each change, so that
///    the file loses nothing of it.
///
/// Lives on the main thread. The file is read in the background; the first call that needs it
/// waits. Does not undo anything itself.
class ChangeLog
{
public:
    /// What an entry is made of.
    struct Change
    {
        ChangeEntry::Kind kind = ChangeEntry::Kind::Snapshot;
        QString target;
        QString detail;
        std::optional<QString> before = std::nullopt;
        std::optional<QString> after = std::nullopt;
        std::optional<int> reversibleDays = 30; ///< calendar days; nothing: never reversible
        std::optional<QString> snapshotId = std::nullopt;
        std::optional<QString> holdingId = std::nullopt;
    };

    /// The number behind the promise that no file of the user's is deleted. Not a counter: files
    /// leave their place by a move into the holding folder only, and what is purged there after its
    /// 30 days doesn't count.
    static constexpr int filesDeleted = 0;

    ChangeLog();

    const QList<ChangeEntry> &entries() const { return m_list->records; }
    /// False while `entries` would have to wait for the file.
    bool isLoaded() const { return m_list.isReady(); }
    /// What waits for the file. May be called on any thread, and outlives the log.
    std::function<void()> waiting() const
    {
        return [list = m_list] { (void)list.shared(); };
    }

    /// Adds an entry of this moment, and gives it.
    ChangeEntry append(const Change &change);
    /// Marks the entry of that id as undone, and gives it as it now stands; nothing, and no write,
    /// where there is none.
    std::optional<ChangeEntry> markReversed(const QString &id);

    /// Entries that are no snapshots.
    int changeCount() const;
    /// Those of them that are not undone.
    int activeCount() const;

private:
    void takeIn(const platform::SharedFileWrite &file);
    void write(platform::SharedFileWrite &file);

    Preloaded<StoreFile::Records<ChangeEntry>> m_list;
};

} // namespace tarnwick
