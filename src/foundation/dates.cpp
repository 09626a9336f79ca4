#include "foundation/dates.h"

#include <QRegularExpression>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The locale's long date without the weekday and with a short month: Qt knows no medium style.
QString mediumDateFormat(const QLocale &locale)
{
    // A weekday ahead takes the comma behind it along, any other the comma ahead of it.
    static const QRegularExpression weekday(u"^dddd?\\s*[,،]?\\s*|[,،]?\\s*dddd?"_s);
    QString format = locale.dateFormat(QLocale::LongFormat);
    format.remove(weekday);
    return format.replace(u"MMMM"_s, u"MMM"_s).trimmed();
}

QString shortTimeFormat(const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    return format.remove(u":ss"_s);
}

/// The form of a date in the stores. A zero stands for any digit.
constexpr QStringView isoForm = u"0000-00-00T00:00:00Z";

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

template <typename Text>
bool hasIsoForm(Text text)
{
    if (text.size() != isoForm.size())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool fits = isoForm[i] == u'0' ? isDigit(text[i]) : text[i] == isoForm[i];
        if (!fits)
            return false;
    }
    return true;
}

template <typename Text>
int numberAt(Text text, qsizetype start, qsizetype digits)
{
    int number = 0;
    for (qsizetype i = start; i < start + digits; ++i)
        number = 10 * number + (QChar(text[i]).unicode() - u'0');
    return number;
}

template <typename Text>
std::optional<QDateTime> momentOf(Text text)
{
    if (!hasIsoForm(text))
        return std::nullopt;
    const QDate date(numberAt(text, 0, 4), numberAt(text, 5, 2), numberAt(text, 8, 2));
    const QTime time(numberAt(text, 11, 2), numberAt(text, 14, 2), numberAt(text, 17, 2));
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

} // namespace

QString dateForPeople(const QDateTime &moment)
{
    return dateForPeople(moment, QLocale::system());
}

QString dateForPeople(const QDateTime &moment, const QLocale &locale)
{
    const QDateTime local = moment.toLocalTime();
    return locale.toString(local.date(), mediumDateFormat(locale)) + u", "_s +
           locale.toString(local.time(), shortTimeFormat(locale));
}

QString isoSeconds(const QDateTime &moment)
{
    const QDateTime utc = moment.toUTC();
    const QDate date = utc.date();
    const QTime time = utc.time();
    char text[64];
    const int length =
        std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", date.year(),
                      date.month(), date.day(), time.hour(), time.minute(), time.second());
    return QString::fromLatin1(text, length);
}

std::optional<QDateTime> parseIsoSeconds(QStringView text)
{
    return momentOf(text);
}

std::optional<QDateTime> parseIsoSeconds(QLatin1StringView text)
{
    return momentOf(text);
}

QDateTime wholeSeconds(const QDateTime &moment)
{
    QDateTime utc = moment.toUTC();
    utc.setTime(QTime(utc.time().hour(), utc.time().minute(), utc.time().second()));
    return utc;
}

QDateTime calendarDaysLater(const QDateTime &moment, int days)
{
    const QDateTime later = moment.toLocalTime().addDays(days).toUTC();
    return later.isValid() ? later : moment;
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
