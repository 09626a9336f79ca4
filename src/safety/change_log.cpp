#include "safety/change_log.h"

#include "foundation/dates.h"
#include "platform/files_write.h"
#include "safety/store.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QString freshId(qsizetype number, const QDateTime &date)
{
    return u"chg-%1-%2"_s.arg(number).arg(date.toMSecsSinceEpoch() / 1000);
}

std::optional<QDateTime> endOfWindow(const QDateTime &date, std::optional<int> days)
{
    return days ? std::optional(calendarDaysLater(date, *days)) : std::nullopt;
}

} // namespace

ChangeLog::ChangeLog()
    : m_list([path = Store::changeLog()] { return StoreFile::load<ChangeEntry>(path); })
{}

ChangeEntry ChangeLog::append(const Change &change)
{
    const QDateTime date = wholeSeconds(platform::now());
    const ChangeEntry entry{.id = freshId(entries().size() + 1, date),
                            .kind = change.kind,
                            .date = date,
                            .target = change.target,
                            .detail = change.detail,
                            .before = change.before,
                            .after = change.after,
                            .reversibleUntil = endOfWindow(date, change.reversibleDays),
                            .reversed = false,
                            .snapshotId = change.snapshotId,
                            .holdingId = change.holdingId};
    m_list->records.prepend(entry);
    m_list->texts.prepend(StoreFile::encoded(entry));
    save();
    return entry;
}

std::optional<ChangeEntry> ChangeLog::markReversed(const QString &id)
{
    const auto found = std::find_if(entries().begin(), entries().end(),
                                    [&](const ChangeEntry &entry) { return entry.id == id; });
    if (found == entries().end())
        return std::nullopt;
    const qsizetype index = found - entries().begin();
    ChangeEntry &entry = m_list->records[index];
    entry.reversed = true;
    m_list->texts[index] = StoreFile::encoded(entry);
    save();
    return entry;
}

int ChangeLog::changeCount() const
{
    return int(std::count_if(entries().begin(), entries().end(), [](const ChangeEntry &entry) {
        return entry.kind != ChangeEntry::Kind::Snapshot;
    }));
}

int ChangeLog::activeCount() const
{
    return int(std::count_if(entries().begin(), entries().end(), [](const ChangeEntry &entry) {
        return entry.kind != ChangeEntry::Kind::Snapshot && !entry.reversed;
    }));
}

void ChangeLog::save() const
{
    (void)platform::writeFilePlainly(Store::changeLog(), StoreFile::listOf(m_list->texts));
}

} // namespace tarnwick
