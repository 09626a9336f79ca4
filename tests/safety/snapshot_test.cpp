#include "safety/snapshot.h"

#include "foundation/dates.h"
#include "safety/store_file.h"
#include "support/safety_records.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

Snapshot snapshot()
{
    return {.id = u"snap-20261120-130000-123"_s,
            .date = QDateTime({2026, 11, 20}, {12, 0}, Qt::UTC),
            .reason = u"Before: relink"_s,
            .sourcePath = u"/home/dj/Music/_Serato_"_s,
            .fileCount = 3,
            .byteSize = 18446744073709551615ULL};
}

const QByteArray written = "{\n"
                           "  \"byteSize\": 18446744073709551615,\n"
                           "  \"date\": \"2026-11-20T12:00:00Z\",\n"
                           "  \"fileCount\": 3,\n"
                           "  \"id\": \"snap-20261120-130000-123\",\n"
                           "  \"reason\": \"Before: relink\",\n"
                           "  \"sourcePath\": \"/home/dj/Music/_Serato_\"\n"
                           "}";

bool reads(const QByteArray &bytes, Snapshot &out)
{
    JsonReader json(bytes);
    return Snapshot::read(json, out) && json.end();
}

} // namespace

class SnapshotTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standsInTheFileAsItsFields();
    void requiresEveryField_data();
    void requiresEveryField();
    void liesInAFolderOfItsOwn();
    void tellsItsDateAsThePeopleDo();
    void holdsFiveItemsInTheirOrder();
};

void SnapshotTest::standsInTheFileAsItsFields()
{
    QByteArray bytes;
    JsonWriter json(bytes, JsonWriter::Style::Pretty);
    snapshot().write(json);
    QCOMPARE(bytes, written);
    Snapshot read;
    QVERIFY(reads(written, read));
    QCOMPARE(read, snapshot());
}

void SnapshotTest::requiresEveryField_data()
{
    QTest::addColumn<QByteArray>("key");
    for (const char *key : {"byteSize", "date", "fileCount", "id", "reason", "sourcePath"})
        QTest::newRow(key) << QByteArray(key);
}

void SnapshotTest::requiresEveryField()
{
    QFETCH(QByteArray, key);
    Snapshot read;
    QVERIFY(!reads(QByteArray(written).replace('"' + key, "\"x" + key), read));
}

void SnapshotTest::liesInAFolderOfItsOwn()
{
    QTemporaryDir folder;
    keepDataIn(folder.path());
    QCOMPARE(snapshot().folderPath(),
             dataIn(folder.path(), u"Snapshots/snap-20261120-130000-123"_s));
}

void SnapshotTest::tellsItsDateAsThePeopleDo()
{
    QCOMPARE(snapshot().shortDate(), dateForPeople(snapshot().date));
    QVERIFY(snapshot().shortDate().contains(u"2026"_s));
}

void SnapshotTest::holdsFiveItemsInTheirOrder()
{
    QCOMPARE(SnapshotSet::entries(),
             (QStringList{u"database V2"_s, u"Subcrates"_s, u"SmartCrates"_s, u"neworder.pref"_s,
                          u"window.pref"_s}));
}

QTEST_GUILESS_MAIN(SnapshotTest)
#include "snapshot_test.moc"
