#include "screens/safety/change_log_figures.h"

#include "foundation/dates.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::ChangeLogFigures {

QString reversibility(const ChangeEntry &entry, const QDateTime &now)
{
    if (entry.reversed)
        return u"Reversed"_s;
    const QString date = dateForPeople(entry.date);
    if (!entry.reversibleUntil)
        return date + u" · safety record"_s;
    const int days = wholeDaysBetween(now, *entry.reversibleUntil);
    return u"%1 · reversible for %2 more %3"_s.arg(date, QString::number(days),
                                                   days == 1 ? u"day"_s : u"days"_s);
}

bool anyReversible(const QList<ChangeEntry> &entries, const QDateTime &now)
{
    return std::any_of(entries.begin(), entries.end(),
                       [&](const ChangeEntry &entry) { return entry.isReversible(now); });
}

} // namespace tarnwick::ChangeLogFigures
