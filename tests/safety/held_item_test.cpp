#include "safety/held_item.h"

#include "safety/store_file.h"

#include <QTest>

#include <ctime>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

HeldItem item()
{
    return {.id = u"held-1-1795176000"_s,
            .originalPath = u"/Music/é.mp3"_s,
            .heldPath = u"/data/Holding/held-1-1795176000/é.mp3"_s,
            .reason = u"Duplicate"_s,
            .date = noon,
            .expiresAt = noon.addDays(30),
            .restored = false};
}

} // namespace

class HeldItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void expiresAndCountsItsDaysDown_data();
    void expiresAndCountsItsDaysDown();
    void countsCalendarDaysAcrossAChangeOfTheClock();
    void standsInTheFileAsItsFields();
    void requiresEveryField_data();
    void requiresEveryField();
};

void HeldItemTest::init()
{
    qputenv("TZ", "UTC");
    ::tzset();
}

void HeldItemTest::expiresAndCountsItsDaysDown_data()
{
    QTest::addColumn<qint64>("secondsToGo");
    QTest::addColumn<bool>("isExpired");
    QTest::addColumn<int>("daysLeft");
    constexpr qint64 day = 86400;
    QTest::newRow("just held") << 30 * day << false << 30;
    QTest::newRow("29 days and a half") << 29 * day + day / 2 << false << 29;
    QTest::newRow("a day") << day << false << 1;
    QTest::newRow("less than a day") << day - 1 << false << 0;
    QTest::newRow("a second") << qint64(1) << false << 0;
    QTest::newRow("the very moment") << qint64(0) << true << 0;
    QTest::newRow("past") << -5 * day << true << 0;
}

void HeldItemTest::expiresAndCountsItsDaysDown()
{
    QFETCH(qint64, secondsToGo);
    QFETCH(bool, isExpired);
    QFETCH(int, daysLeft);
    const QDateTime now = item().expiresAt.addSecs(-secondsToGo);
    QCOMPARE(item().isExpired(now), isExpired);
    QCOMPARE(item().daysLeft(now), daysLeft);
    const platform::ScopedClock clock(now);
    QCOMPARE(item().isExpired(), isExpired);
    QCOMPARE(item().daysLeft(), daysLeft);
}

void HeldItemTest::countsCalendarDaysAcrossAChangeOfTheClock()
{
    qputenv("TZ", "Europe/Berlin");
    ::tzset();
    HeldItem held = item();
    const QDateTime heldAt({2026, 3, 10}, {13, 0}, Qt::UTC);    // 14:00 in winter time
    held.expiresAt = QDateTime({2026, 4, 9}, {12, 0}, Qt::UTC); // 14:00 in summer time
    QCOMPARE(held.daysLeft(heldAt), 30);
    QCOMPARE(held.daysLeft(heldAt.addSecs(1)), 29);
}

void HeldItemTest::standsInTheFileAsItsFields()
{
    const QByteArray text = "{\n"
                            "    \"date\": \"2026-11-20T12:00:00Z\",\n"
                            "    \"expiresAt\": \"2026-12-20T12:00:00Z\",\n"
                            "    \"heldPath\": \"/data/Holding/held-1-1795176000/é.mp3\",\n"
                            "    \"id\": \"held-1-1795176000\",\n"
                            "    \"originalPath\": \"/Music/é.mp3\",\n"
                            "    \"reason\": \"Duplicate\",\n"
                            "    \"restored\": false\n"
                            "  }";
    QCOMPARE(StoreFile::encoded(item()), text);
    const QByteArray file = StoreFile::listOf({text});
    QCOMPARE(StoreFile::decoded<HeldItem>(file)->records, QList<HeldItem>{item()});
}

void HeldItemTest::requiresEveryField_data()
{
    QTest::addColumn<QByteArray>("key");
    for (const char *key :
         {"date", "expiresAt", "heldPath", "id", "originalPath", "reason", "restored"})
        QTest::newRow(key) << QByteArray(key);
}

void HeldItemTest::requiresEveryField()
{
    QFETCH(QByteArray, key);
    const QByteArray file = StoreFile::listOf({StoreFile::encoded(item())});
    QVERIFY(StoreFile::decoded<HeldItem>(file).has_value());
    QVERIFY(!StoreFile::decoded<HeldItem>(QByteArray(file).replace('"' + key, "\"x" + key)));
}

QTEST_GUILESS_MAIN(HeldItemTest)
#include "held_item_test.moc"
