#include "serato/record_file.h"

#include "platform/fault_gate.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

#include <QRandomGenerator>
#include <QTest>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;
using SeratoParser::Field;

namespace {

/// The records one after another as bytes again, and how much stands behind them.
struct Records
{
    QByteArray bytes;
    quint64 rest = 0;

    bool operator==(const Records &) const = default;
};

Records readThrough(const QString &path)
{
    auto file = RecordFile::open(path);
    Records records;
    while (const std::optional<Field> field = *file->next())
        records.bytes += record(field->tag.text().toLatin1(), field->payload.toByteArray());
    records.rest = file->rest();
    return records;
}

Records walkThrough(const QByteArray &bytes)
{
    const qsizetype walked = SeratoParser::walk(bytes, [](const Field &) {});
    return {bytes.first(walked), quint64(bytes.size() - walked)};
}

/// Records of all sizes around that of the buffer.
QByteArray manyRecords(QRandomGenerator &random, qsizetype total)
{
    QByteArray bytes;
    while (bytes.size() < total) {
        const int size = random.bounded(4) == 0 ? random.bounded(300'000) : random.bounded(600);
        bytes += record("otrk", QByteArray(size, char(random.bounded(256))));
    }
    return bytes;
}

} // namespace

class RecordFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesWhatAWalkVisits_data();
    void givesWhatAWalkVisits();
    void givesWhatAWalkVisitsForRandomFiles();
    void staysAtItsEnd();
    void lengthPastTheEndIsNotRead();
    void fileThatCannotBeOpenedFails();
    void diskFaultFails_data();
    void diskFaultFails();
    void fileThatHasBecomeShorterEndsThere();
};

void RecordFileTest::givesWhatAWalkVisits_data()
{
    QTest::addColumn<QByteArray>("bytes");
    constexpr int buffer = 256 * 1024;
    const QByteArray filling = record("aaaa", QByteArray(buffer - 8, 'x'));
    const QByteArray small = record("bbbb", "y");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("7 bytes") << QByteArray("abcdefg");
    QTest::newRow("one empty record") << record("aaaa");
    QTest::newRow("buffer filled to the byte") << filling;
    QTest::newRow("record behind a filled buffer") << filling + small;
    QTest::newRow("record one byte larger than the buffer")
        << record("aaaa", QByteArray(buffer - 7, 'x')) + small;
    QTest::newRow("header across the buffer's end")
        << record("aaaa", QByteArray(buffer - 12, 'x')) + small + small;
    QTest::newRow("7 bytes behind a filled buffer") << filling + "abcdefg";
    QTest::newRow("cut record behind a filled buffer") << filling + small.chopped(1);
    QTest::newRow("high byte in a tag behind a filled buffer")
        << filling + hex("c3a96b65 00000000") + small;
    QTest::newRow("large record of a tag with a high byte")
        << small + hex("c3a96b65 00080000") + QByteArray(0x80000, 'x') + small;
}

void RecordFileTest::givesWhatAWalkVisits()
{
    QFETCH(const QByteArray, bytes);
    const TestFolder folder;
    QVERIFY(readThrough(folder.write(u"file"_s, bytes)) == walkThrough(bytes));
}

void RecordFileTest::givesWhatAWalkVisitsForRandomFiles()
{
    QRandomGenerator random(4711);
    const TestFolder folder;
    for (int round = 0; round < 20; ++round) {
        QByteArray bytes = manyRecords(random, 1'500'000);
        bytes.truncate(random.bounded(int(bytes.size())));
        QVERIFY(readThrough(folder.write(u"file"_s, bytes)) == walkThrough(bytes));
    }
}

void RecordFileTest::staysAtItsEnd()
{
    const TestFolder folder;
    auto file = RecordFile::open(folder.write(u"file"_s, record("aaaa") + "rest"));
    QVERIFY((*file->next()).has_value());
    QVERIFY(!(*file->next()).has_value());
    QVERIFY(!(*file->next()).has_value());
    QCOMPARE(file->rest(), 4);
    QCOMPARE(file->size(), 12);
}

void RecordFileTest::lengthPastTheEndIsNotRead()
{
    const TestFolder folder;
    const QByteArray bytes = hex("6f74726b ffffffff") + QByteArray(600'000, 'x');
    const QString path = folder.write(u"file"_s, bytes);
    int reads = 0;
    const platform::ScopedFaults count([&](platform::FileOperation operation, const QString &) {
        reads += operation == platform::FileOperation::Read;
        return 0;
    });
    QCOMPARE(readThrough(path).rest, 600'008);
    QCOMPARE(reads, 1);
}

void RecordFileTest::fileThatCannotBeOpenedFails()
{
    const TestFolder folder;
    QCOMPARE(RecordFile::open(folder.path(u"none"_s)).error().message,
             u"The file “none” couldn't be opened: No such file or directory."_s);
    QVERIFY(!RecordFile::open(folder.path()));
}

void RecordFileTest::diskFaultFails_data()
{
    QTest::addColumn<int>("readThatFails");
    QTest::newRow("first") << 1;
    QTest::newRow("second") << 2;
    QTest::newRow("third") << 3;
}

void RecordFileTest::diskFaultFails()
{
    QFETCH(const int, readThatFails);
    const TestFolder folder;
    const QString path = folder.write(u"file"_s, record("aaaa", "x").repeated(80'000));
    int reads = 0;
    const platform::ScopedFaults faults([&](platform::FileOperation operation, const QString &) {
        return operation == platform::FileOperation::Read && ++reads == readThatFails ? EIO : 0;
    });
    auto file = RecordFile::open(path);
    QVERIFY(file);
    auto next = file->next();
    while (next && *next)
        next = file->next();
    QVERIFY(!next);
    QCOMPARE(next.error().message, u"The file “file” couldn't be read: Input/output error."_s);
}

void RecordFileTest::fileThatHasBecomeShorterEndsThere()
{
    const TestFolder folder;
    const QString path = folder.write(u"file"_s, record("aaaa", "x").repeated(80'000));
    auto file = RecordFile::open(path);
    QVERIFY((*file->next()).has_value());
    QVERIFY(QFile::resize(path, 300'000));
    int records = 1;
    while (*file->next())
        ++records;
    QCOMPARE(records, 300'000 / 9);
}

QTEST_GUILESS_MAIN(RecordFileTest)
#include "record_file_test.moc"
