#include "foundation/dates.h"

#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The locale's long date without the weekday and with a short month: Qt knows no medium style.
QString mediumDateFormat(const QLocale &locale)
{
    static const QRegularExpression weekday(u"[^\\s\\w]*\\s*\\bdddd?\\b[,.]?\\s*"_s);
    QString format = locale.dateFormat(QLocale::LongFormat);
    format.remove(weekday);
    return format.replace(u"MMMM"_s, u"MMM"_s).trimmed();
}

QString shortTimeFormat(const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    return format.remove(u":ss"_s);
}

constexpr auto isoFormat = "yyyy-MM-ddTHH:mm:ss'Z'";

} // namespace

QString dateForPeople(const QDateTime &moment)
{
    const QLocale locale = QLocale::system();
    const QDateTime local = moment.toLocalTime();
    return locale.toString(local.date(), mediumDateFormat(locale)) + u", "_s +
           locale.toString(local.time(), shortTimeFormat(locale));
}

QString isoSeconds(const QDateTime &moment)
{
    return moment.toUTC().toString(QLatin1StringView(isoFormat));
}

std::optional<QDateTime> parseIsoSeconds(QStringView text)
{
    if (text.size() != 20)
        return std::nullopt;
    QDateTime moment = QDateTime::fromString(text.toString(), QLatin1StringView(isoFormat));
    moment.setTimeSpec(Qt::UTC);
    if (!moment.isValid() || isoSeconds(moment) != text)
        return std::nullopt;
    return moment;
}

QDateTime calendarDaysLater(const QDateTime &moment, int days)
{
    return moment.toLocalTime().addDays(days).toUTC();
}

int wholeDaysBetween(const QDateTime &from, const QDateTime &to)
{
    const QDateTime start = from.toLocalTime();
    const QDateTime end = to.toLocalTime();
    qint64 days = start.date().daysTo(end.date());
    if (days > 0 && start.addDays(days) > end)
        --days;
    return int(qMax<qint64>(days, 0));
}

} // namespace tarnwick
