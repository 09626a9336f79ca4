#include "foundation/dates.h"

#include <QLocale>
#include <QTest>

#include <ctime>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// Set ahead of main(), since the library asks for the user's locale only once.
[[maybe_unused]] const bool inTheCLocale = qputenv("LC_ALL", "C");

QDateTime utc(const char *iso)
{
    return QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODateWithMs);
}

void setTimeZone(const char *name)
{
    qputenv("TZ", name);
    ::tzset();
}

} // namespace

class DatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setTimeZone("UTC"); }
    void tellsPeopleADateInTheirLocalTime();
    void tellsDatesAsALocaleDoes_data();
    void tellsDatesAsALocaleDoes();
    void leavesTheWeekdayOutInEveryLocale();
    void writesWholeSecondsInUtc_data();
    void writesWholeSecondsInUtc();
    void readsExactlyWhatItWrites_data();
    void readsExactlyWhatItWrites();
    void refusesEveryOtherForm_data();
    void refusesEveryOtherForm();
    void keepsTheWallClockAcrossCalendarDays_data();
    void keepsTheWallClockAcrossCalendarDays();
    void countsWholeDays_data();
    void countsWholeDays();
};

void DatesTest::tellsPeopleADateInTheirLocalTime()
{
    QCOMPARE(dateForPeople(utc("2026-11-20T14:05:59Z")), u"20 Nov 2026, 14:05"_s);
    setTimeZone("Europe/Berlin");
    QCOMPARE(dateForPeople(utc("2026-12-31T23:30:00Z")), u"1 Jan 2027, 00:30"_s);
}

void DatesTest::tellsDatesAsALocaleDoes_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::newRow("C") << QLocale::c() << u"4 Mar 2026, 09:05"_s;
    QTest::newRow("American") << QLocale(u"en_US"_s) << u"Mar 4, 2026, 9:05 AM"_s;
    QTest::newRow("British") << QLocale(u"en_GB"_s) << u"4 Mar 2026, 09:05"_s;
    QTest::newRow("German") << QLocale(u"de_DE"_s) << u"4. März 2026, 09:05"_s;
    QTest::newRow("Hungarian") << QLocale(u"hu_HU"_s) << u"2026. márc. 4., 9:05"_s;
    QTest::newRow("Japanese") << QLocale(u"ja_JP"_s) << u"2026年3月4日, 9:05"_s;
    QTest::newRow("Swedish") << QLocale(u"sv_SE"_s) << u"4 mars 2026, 09:05"_s;
}

void DatesTest::tellsDatesAsALocaleDoes()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    QCOMPARE(dateForPeople(utc("2026-03-04T09:05:00Z"), locale), text);
}

/// Whatever order and signs a locale has: day, year and no weekday, and nothing left dangling.
void DatesTest::leavesTheWeekdayOutInEveryLocale()
{
    const QDateTime moment = utc("2026-03-24T09:05:00Z");
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString text = dateForPeople(moment, locale);
        const QString hint = locale.name() + u": "_s + text;
        QVERIFY2(text.contains(locale.toString(24)), qPrintable(hint));
        QVERIFY2(!text.contains(locale.dayName(2)), qPrintable(hint));
        QVERIFY2(!text.startsWith(u',') && !text.startsWith(u' '), qPrintable(hint));
        QVERIFY2(!text.contains(u",,"_s) && !text.contains(u" ,"_s), qPrintable(hint));
    }
}

void DatesTest::writesWholeSecondsInUtc_data()
{
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QString>("text");
    const QDateTime winter = utc("2026-01-02T03:04:05Z");
    QTest::newRow("UTC") << winter << u"2026-01-02T03:04:05Z"_s;
    QTest::newRow("a fraction is cut off") << winter.addMSecs(999) << u"2026-01-02T03:04:05Z"_s;
    QTest::newRow("an offset is taken away")
        << winter.toOffsetFromUtc(3600) << u"2026-01-02T03:04:05Z"_s;
    QTest::newRow("ahead of 1970") << utc("1969-12-31T23:59:59Z") << u"1969-12-31T23:59:59Z"_s;
}

void DatesTest::writesWholeSecondsInUtc()
{
    QFETCH(QDateTime, moment);
    QFETCH(QString, text);
    QCOMPARE(isoSeconds(moment), text);
}

void DatesTest::readsExactlyWhatItWrites_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"2026-11-20T14:05:00Z", "1970-01-01T00:00:00Z", "2024-02-29T23:59:59Z",
          "1969-07-20T20:17:40Z", "9999-12-31T23:59:59Z", "0001-01-01T00:00:00Z"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void DatesTest::readsExactlyWhatItWrites()
{
    QFETCH(QString, text);
    const auto moment = parseIsoSeconds(text);
    QVERIFY(moment.has_value());
    QCOMPARE(moment->timeSpec(), Qt::UTC);
    QCOMPARE(isoSeconds(*moment), text);
    const QByteArray latin = text.toLatin1();
    QCOMPARE(*moment, utc(latin.constData()));
    QCOMPARE(parseIsoSeconds(QLatin1StringView(latin)), moment);
    QCOMPARE(wholeSeconds(moment->addMSecs(999)), moment);
}

void DatesTest::refusesEveryOtherForm_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    row("empty", u""_s);
    row("a fraction", u"2026-11-20T14:05:00.5Z"_s);
    row("an offset", u"2026-11-20T14:05:00+00:00"_s);
    row("no zone", u"2026-11-20T14:05:00"_s);
    row("no seconds", u"2026-11-20T14:05Z"_s);
    row("a blank for the T", u"2026-11-20 14:05:00Z"_s);
    row("small letters", u"2026-11-20t14:05:00z"_s);
    row("a blank ahead", u" 2026-11-20T14:05:00Z"_s);
    row("a blank behind", u"2026-11-20T14:05:00Z "_s);
    row("one digit for the month", u"2026-1-20T14:05:00ZZ"_s);
    row("a sign among the digits", u"2026-11-20T14:05:+0Z"_s);
    row("digits of another script", u"２０２６-11-20T14:05:00Z"_s);
    row("month 13", u"2026-13-20T14:05:00Z"_s);
    row("month 0", u"2026-00-20T14:05:00Z"_s);
    row("30 February", u"2026-02-30T14:05:00Z"_s);
    row("29 February of a common year", u"2026-02-29T14:05:00Z"_s);
    row("hour 24", u"2026-11-20T24:00:00Z"_s);
    row("minute 60", u"2026-11-20T14:60:00Z"_s);
    row("second 60", u"2026-11-20T14:05:60Z"_s);
    row("year 0", u"0000-11-20T14:05:00Z"_s);
}

void DatesTest::refusesEveryOtherForm()
{
    QFETCH(QString, text);
    QVERIFY(!parseIsoSeconds(text));
    const QByteArray latin = text.toLatin1();
    QVERIFY(!parseIsoSeconds(QLatin1StringView(latin)));
}

void DatesTest::keepsTheWallClockAcrossCalendarDays_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<QDateTime>("to");
    QTest::newRow("no change of the clock")
        << QByteArray("UTC") << utc("2026-01-01T14:00:00Z") << utc("2026-01-31T14:00:00Z");
    QTest::newRow("into summer time, an hour shorter")
        << QByteArray("Europe/Berlin") << utc("2026-03-10T13:00:00Z")
        << utc("2026-04-09T12:00:00Z");
    QTest::newRow("out of summer time, an hour longer")
        << QByteArray("Europe/Berlin") << utc("2026-10-10T12:00:00Z")
        << utc("2026-11-09T13:00:00Z");
}

void DatesTest::keepsTheWallClockAcrossCalendarDays()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, from);
    QFETCH(QDateTime, to);
    setTimeZone(zone.constData());
    QCOMPARE(calendarDaysLater(from, 30), to);
    QCOMPARE(calendarDaysLater(from, 30).timeSpec(), Qt::UTC);
    QCOMPARE(wholeDaysBetween(from, to), 30);
    QCOMPARE(wholeDaysBetween(from.addSecs(1), to), 29);
}

void DatesTest::countsWholeDays_data()
{
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<QDateTime>("to");
    QTest::addColumn<int>("days");
    const QDateTime noon = utc("2026-06-15T12:00:00Z");
    QTest::newRow("the same moment") << noon << noon << 0;
    QTest::newRow("later the same day") << noon << noon.addSecs(3600) << 0;
    QTest::newRow("past midnight, not yet a day") << noon << noon.addSecs(86399) << 0;
    QTest::newRow("a day to the second") << noon << noon.addSecs(86400) << 1;
    QTest::newRow("29 days and a half") << noon << noon.addSecs(29 * 86400 + 43200) << 29;
    QTest::newRow("a moment that has passed") << noon << noon.addDays(-3) << 0;
}

void DatesTest::countsWholeDays()
{
    QFETCH(QDateTime, from);
    QFETCH(QDateTime, to);
    QFETCH(int, days);
    QCOMPARE(wholeDaysBetween(from, to), days);
}

QTEST_GUILESS_MAIN(DatesTest)
#include "dates_test.moc"
