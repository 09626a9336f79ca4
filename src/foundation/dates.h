#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <optional>

namespace tarnwick {

/// A moment as people read it: date in medium style and time in short style of the user's locale,
/// in local time. "20 Nov 2026, 14:05" in the C locale.
QString dateForPeople(const QDateTime &moment);
QString dateForPeople(const QDateTime &moment, const QLocale &locale);

/// "YYYY-MM-DDTHH:MM:SSZ" in UTC; a fraction of a second is cut off.
QString isoSeconds(const QDateTime &moment);

/// The moment that exactly such a text states, in UTC; nothing for any other form.
std::optional<QDateTime> parseIsoSeconds(QStringView text);
std::optional<QDateTime> parseIsoSeconds(QLatin1StringView text);

/// Without its fraction of a second, as it will come back from a store.
QDateTime wholeSeconds(const QDateTime &moment);

/// The same wall-clock time so many calendar days later, as the machine's time zone has it; the
/// moment itself where the calendar ends before that.
QDateTime calendarDaysLater(const QDateTime &moment, int days);

/// Whole calendar days from one moment to a later one in local time; never below 0.
int wholeDaysBetween(const QDateTime &from, const QDateTime &to);

} // namespace tarnwick
