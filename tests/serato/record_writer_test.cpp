#include "serato/record_writer.h"

#include "serato/serato_parser.h"
#include "support/serato_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

class RecordWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsStandOneBehindTheOther();
    void textIsHighByteFirstWithoutMarkOrTerminator();
    void longPayloadHasItsLengthHighByteFirst();
    void parserReadsWhatWasWritten();
};

void RecordWriterTest::recordsStandOneBehindTheOther()
{
    QByteArray bytes = "ahead";
    appendRecord(bytes, "bmis"_tag, QByteArrayView("\1", 1));
    appendRecord(bytes, "otrk"_tag, {});
    QCOMPARE(bytes, "ahead" + hex("626d6973" // bmis
                                  "00000001"
                                  "01"
                                  "6f74726b" // otrk
                                  "00000000"));
}

void RecordWriterTest::textIsHighByteFirstWithoutMarkOrTerminator()
{
    QByteArray bytes;
    appendTextRecord(bytes, "tsng"_tag, u"Aé\U0001F600");
    QCOMPARE(bytes, hex("74736e67" // tsng
                        "00000008"
                        "0041"         // A
                        "00e9"         // é
                        "d83d de00")); // U+1F600 as a surrogate pair
    bytes.clear();
    appendTextRecord(bytes, "tsng"_tag, u"");
    QCOMPARE(bytes, hex("74736e67 00000000"));
}

void RecordWriterTest::longPayloadHasItsLengthHighByteFirst()
{
    QByteArray bytes;
    appendRecord(bytes, "aaaa"_tag, QByteArray(0x012345, 'x'));
    QCOMPARE(bytes.first(9), hex("61616161 00012345 78"));
    QCOMPARE(bytes.size(), 8 + 0x012345);
}

void RecordWriterTest::parserReadsWhatWasWritten()
{
    QByteArray bytes;
    appendTextRecord(bytes, "pfil"_tag, u"Users/ä.mp3");
    const std::vector<SeratoParser::Field> fields = SeratoParser::fieldsIn(bytes);
    QCOMPARE(fields.size(), 1);
    QCOMPARE(fields.front().tag, "pfil"_tag);
    QCOMPARE(fields.front().text(), u"Users/ä.mp3"_s);
}

QTEST_GUILESS_MAIN(RecordWriterTest)
#include "record_writer_test.moc"
