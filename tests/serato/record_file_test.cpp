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
    while (const std::optional<Field> field = *file->next("otrk"_tag))
        records.bytes += record(field->tag.text().toLatin1(), field->payload.toByteArray());
    records.rest = file->rest();
    return records;
}

Records walkThrough(const QByteArray &bytes)
{
    QByteArray wanted;
    const qsizetype walked = SeratoParser::walk(bytes, [&](const Field &field) {
        if (field.tag == "otrk"_tag)
            wanted += record("otrk", field.payload.toByteArray());
    });
    return {wanted, quint64(bytes.size() - walked)};
}

/// Records of all sizes around that of the buffer.
QByteArray manyRecords(QRandomGenerator &random, qsizetype total)
{
    QByteArray bytes;
    while (bytes.size() < total) {
        const int size = random.bounded(4) == 0 ? random.bounded(300'000) : random.bounded(600);
        const char *tag = random.bounded(3) == 0 ? "xxxx" : "otrk";
        bytes += record(tag, QByteArray(size, char(random.bounded(256))));
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
    void recordsThatAreNotWantedAreNotRead();
    void fileThatCannotBeOpenedFails();
    void diskFaultFails_data();
    void diskFaultFails();
    void fileThatHasBecomeShorterEndsThere();
};

void RecordFileTest::givesWhatAWalkVisits_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("7 bytes") << QByteArray("abcdefg");
    QTest::newRow("one empty record") << record("otrk");
    QTest::newRow("one that is not wanted") << record("vrsn", "x");
    constexpr int buffer = 256 * 1024;
    const QByteArray small = record("otrk", "y");
    for (const char *tag : {"otrk", "xxxx"}) {
        const QByteArray filling = record(tag, QByteArray(buffer - 8, 'x'));
        QTest::addRow("%s, buffer filled to the byte", tag) << filling;
        QTest::addRow("%s, record behind a filled buffer", tag) << filling + small;
        QTest::addRow("%s, one byte larger than the buffer", tag)
            << record(tag, QByteArray(buffer - 7, 'x')) + small;
        QTest::addRow("%s, much larger than the buffer", tag)
            << small + record(tag, QByteArray(5 * buffer, 'x')) + small;
        QTest::addRow("%s, header across the buffer's end", tag)
            << record(tag, QByteArray(buffer - 12, 'x')) + small + small;
        QTest::addRow("%s, 7 bytes behind a filled buffer", tag) << filling + "abcdefg";
        QTest::addRow("%s, cut record behind a filled buffer", tag) << filling + small.chopped(1);
        QTest::addRow("%s, cut and larger than the buffer", tag)
            << small + record(tag, QByteArray(2 * buffer, 'x')).chopped(1);
        QTest::addRow("%s, high byte in a tag behind a filled buffer", tag)
            << filling + hex("c3a96b65 00000000") + small;
    }
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
    QVERIFY((*file->next("aaaa"_tag)).has_value());
    QVERIFY(!(*file->next("aaaa"_tag)).has_value());
    QVERIFY(!(*file->next("aaaa"_tag)).has_value());
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

void RecordFileTest::recordsThatAreNotWantedAreNotRead()
{
    const TestFolder folder;
    const QString path = folder.write(u"file"_s, hex("786f6c65 ffffffff"));
    QFile large(path);
    QVERIFY(large.resize(8 + 0xFFFFFFFFLL)); // holes, which take no room on the disk
    QVERIFY(large.open(QIODevice::Append));
    large.write(record("otrk", "x"));
    large.close();
    int operations = 0;
    const platform::ScopedFaults count([&](platform::FileOperation operation, const QString &) {
        operations += operation == platform::FileOperation::Read;
        return 0;
    });
    QVERIFY((readThrough(path) == Records{record("otrk", "x"), 0}));
    QVERIFY(operations <= 3);
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
    auto next = file->next("aaaa"_tag);
    while (next && *next)
        next = file->next("aaaa"_tag);
    QVERIFY(!next);
    QCOMPARE(next.error().message, u"The file “file” couldn't be read: Input/output error."_s);
}

void RecordFileTest::fileThatHasBecomeShorterEndsThere()
{
    const TestFolder folder;
    const QString path = folder.write(u"file"_s, record("aaaa", "x").repeated(80'000));
    auto file = RecordFile::open(path);
    QVERIFY((*file->next("aaaa"_tag)).has_value());
    QVERIFY(QFile::resize(path, 300'000));
    int records = 1;
    while (*file->next("aaaa"_tag))
        ++records;
    QCOMPARE(records, 300'000 / 9);
}

QTEST_GUILESS_MAIN(RecordFileTest)
#include "record_file_test.moc"
