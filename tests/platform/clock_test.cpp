#include "platform/clock.h"

#include <QTest>

using namespace tarnwick::platform;

class ClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsThePresentInUtc();
    void standsStillUnderAGuard();
};

void ClockTest::tellsThePresentInUtc()
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QDateTime told = now();
    QCOMPARE(told.timeSpec(), Qt::UTC);
    QVERIFY(before <= told && told <= QDateTime::currentDateTimeUtc());
}

void ClockTest::standsStillUnderAGuard()
{
    const QDateTime noon(QDate(2026, 11, 20), QTime(12, 0), Qt::UTC);
    {
        ScopedClock clock(noon.toOffsetFromUtc(7200));
        QCOMPARE(now(), noon);
        QCOMPARE(now().timeSpec(), Qt::UTC);
        clock.set(noon.addDays(30));
        QCOMPARE(now(), noon.addDays(30));
    }
    QVERIFY(now().secsTo(QDateTime::currentDateTimeUtc()) < 60);
}

QTEST_GUILESS_MAIN(ClockTest)
#include "clock_test.moc"
