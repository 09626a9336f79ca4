#include "serato/document_record.h"

#include "support/serato_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

class DocumentRecordTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trackHasItsFieldsInOrder();
    void anyOtherRecordIsOpaque();
    void bytesComeBackAsTheyWere_data();
    void bytesComeBackAsTheyWere();
    void firstFieldOfATagCounts();
    void textOfAField_data();
    void textOfAField();
    void setTextReplacesThePayload();
    void byteOfAField();
    void recordWithoutContentHasAnEmptyBody();
};

void DocumentRecordTest::trackHasItsFieldsInOrder()
{
    const QByteArray unknown = record("uknw", hex("00ff"));
    const auto track = DocumentRecord::fromBytes(
        trackRecord({unknown, textRecord("pfil", u"/a.mp3"), flagRecord("bmis", true)}));
    QVERIFY(track.isTrack());
    QVERIFY(!track.opaque);
    const QList<DocumentField> expected = {
        {"uknw"_tag, hex("00ff")}, {"pfil"_tag, utf16(u"/a.mp3")}, {"bmis"_tag, hex("01")}};
    QCOMPARE(*track.fields, expected);
    QCOMPARE(track.pfil(), u"/a.mp3"_s);
}

void DocumentRecordTest::anyOtherRecordIsOpaque()
{
    const auto other = DocumentRecord::fromBytes(record("oxyz", textRecord("pfil", u"a.mp3")));
    QVERIFY(!other.isTrack());
    QVERIFY(!other.fields);
    QCOMPARE(other.opaque, textRecord("pfil", u"a.mp3"));
    QCOMPARE(other.field("pfil"_tag), nullptr);
    QCOMPARE(other.pfil(), QString());
}

void DocumentRecordTest::bytesComeBackAsTheyWere_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("version") << databaseVersion();
    QTest::newRow("empty track") << record("otrk");
    QTest::newRow("track") << trackRecord({textRecord("pfil", u"a.mp3"), record("uknw"),
                                           flagRecord("bmis", false), record("uknw", "x")});
    QTest::newRow("unknown record") << record("abcd", hex("00 01 02 ff"));
}

void DocumentRecordTest::bytesComeBackAsTheyWere()
{
    QFETCH(const QByteArray, bytes);
    QCOMPARE(DocumentRecord::fromBytes(bytes).bytes(), bytes);
}

void DocumentRecordTest::firstFieldOfATagCounts()
{
    const auto track = DocumentRecord::fromBytes(
        trackRecord({textRecord("pfil", u"first"), textRecord("pfil", u"second")}));
    QCOMPARE(track.pfil(), u"first"_s);
    QCOMPARE(track.field("pfil"_tag)->text(), u"first"_s);
    QCOMPARE(track.field("tsng"_tag), nullptr);
}

void DocumentRecordTest::textOfAField_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("one byte") << hex("41") << QString();
    QTest::newRow("odd last byte") << hex("0041 42") << u"A"_s;
    QTest::newRow("unpaired surrogate") << hex("d800 0041") << u"\uFFFDA"_s;
    QTest::newRow("surrogate pair") << hex("d83d de00") << u"\U0001F600"_s;
}

void DocumentRecordTest::textOfAField()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const QString, text);
    QCOMPARE(DocumentField({"tsng"_tag, payload}).text(), text);
}

void DocumentRecordTest::setTextReplacesThePayload()
{
    DocumentField field{"tsng"_tag, hex("ffffffffff")};
    field.setText(u"A\U0001F600"_s);
    QCOMPARE(field.payload, hex("0041 d83d de00"));
    field.setText(QString());
    QCOMPARE(field.payload, QByteArray());
}

void DocumentRecordTest::byteOfAField()
{
    DocumentField field{"bmis"_tag, QByteArray()};
    QCOMPARE(field.byte(), 0);
    field.payload = hex("fe01");
    QCOMPARE(field.byte(), 0xfe);
    field.setByte(0);
    QCOMPARE(field.payload, hex("00"));
}

void DocumentRecordTest::recordWithoutContentHasAnEmptyBody()
{
    QCOMPARE(DocumentRecord({"vrsn"_tag}).bytes(), hex("7672736e 00000000"));
}

QTEST_GUILESS_MAIN(DocumentRecordTest)
#include "document_record_test.moc"
