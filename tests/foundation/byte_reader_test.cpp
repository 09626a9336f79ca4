#include "foundation/byte_reader.h"

#include <QTest>

#include <limits>

using namespace tarnwick;

class ByteReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesWhatIsThereInOrder();
    void neitherGivesNorMovesWhereTooLittleRemains_data();
    void neitherGivesNorMovesWhereTooLittleRemains();
    void readsNumbersHighByteFirst();
};

void ByteReaderTest::takesWhatIsThereInOrder()
{
    const QByteArray bytes = "abcdef";
    ByteReader reader{bytes};
    QCOMPARE(reader.take(2)->toByteArray(), QByteArray("ab"));
    QCOMPARE(reader.take(0)->size(), 0);
    QCOMPARE(reader.take(4)->toByteArray(), QByteArray("cdef"));
    QCOMPARE(reader.position(), 6);
    QCOMPARE(reader.remaining(), 0);
    QVERIFY(reader.take(0).has_value());
}

void ByteReaderTest::neitherGivesNorMovesWhereTooLittleRemains_data()
{
    QTest::addColumn<quint64>("count");
    QTest::newRow("one too many") << quint64(4);
    QTest::newRow("largest 32-bit length") << quint64(std::numeric_limits<quint32>::max());
    QTest::newRow("just past a signed length") << quint64(std::numeric_limits<qint64>::max()) + 1;
    QTest::newRow("largest length") << std::numeric_limits<quint64>::max();
}

void ByteReaderTest::neitherGivesNorMovesWhereTooLittleRemains()
{
    QFETCH(quint64, count);
    const QByteArray bytes = "abc";
    ByteReader reader{bytes};
    QVERIFY(!reader.take(count));
    QVERIFY(!reader.has(count));
    QVERIFY(!reader.takeBigEndian32());
    QCOMPARE(reader.position(), 0);
}

void ByteReaderTest::readsNumbersHighByteFirst()
{
    const QByteArray bytes("\xFE\x00\x01\x02\x7F", 5);
    ByteReader reader{bytes};
    QCOMPARE(reader.takeBigEndian32(), std::optional<quint32>(0xFE000102));
    QVERIFY(!reader.takeBigEndian32());
    QCOMPARE(reader.remaining(), 1);
}

QTEST_GUILESS_MAIN(ByteReaderTest)
#include "byte_reader_test.moc"
