#include "safety/change_log.h"

#include "foundation/dates.h"
#include "safety/store.h"

#include <QHash>

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

void mark(StoreFile::Records<ChangeEntry> &list, qsizetype place)
{
    list.records[place].reversed = true;
    list.texts[place] = StoreFile::encoded(list.records.at(place));
}

} // namespace

ChangeLog::ChangeLog()
    : m_list([path = Store::changeLog()] { return StoreFile::load<ChangeEntry>(path); })
{}

ChangeEntry ChangeLog::append(const Change &change)
{
    (void)entries(); // whose reading waits for a write under way
    platform::SharedFileWrite file(Store::changeLog());
    takeIn(file);
    const QDateTime date = wholeSeconds(platform::now());
    ChangeEntry entry{.id = freshId(entries().size() + 1, date),
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
    write(file);
    return entry;
}

std::optional<ChangeEntry> ChangeLog::markReversed(const QString &id)
{
    if (StoreFile::placeOf(entries(), id) < 0)
        return std::nullopt;
    platform::SharedFileWrite file(Store::changeLog());
    takeIn(file);
    const qsizetype index = StoreFile::placeOf(entries(), id);
    mark(*m_list, index);
    write(file);
    return entries().at(index);
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

/// Entries that only the file has are newer than what this process knew of.
void ChangeLog::takeIn(const platform::SharedFileWrite &file)
{
    const auto content = file.contentUnlike(m_list->state);
    auto others = content ? StoreFile::decoded<ChangeEntry>(*content) : std::nullopt;
    if (!others)
        return;
    QHash<QString, qsizetype> places;
    for (qsizetype place = entries().size() - 1; place >= 0; --place)
        places.insert(entries().at(place).id, place);
    qsizetype added = 0;
    for (qsizetype i = 0; i < others->records.size(); ++i) {
        const ChangeEntry &other = others->records.at(i);
        const qsizetype place = places.value(other.id, -1);
        if (place >= 0) {
            if (other.reversed && !entries().at(place + added).reversed)
                mark(*m_list, place + added);
            continue;
        }
        m_list->records.insert(added, other);
        m_list->texts.insert(added, StoreFile::encoded(other));
        ++added;
    }
}

void ChangeLog::write(platform::SharedFileWrite &file)
{
    (void)file.write(StoreFile::listOf(m_list->texts), m_list->state);
}

} // namespace tarnwick
