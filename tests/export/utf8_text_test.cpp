#include "export/utf8_text.h"

#include <QTest>

#include <limits>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class Utf8TextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void appendsPieceByPiece();
    void encodesText_data();
    void encodesText();
    void growsForWhateverIsAdded();
    void beginsAnewInTheSameBuffer();
    void writesWholeNumbers();
};

void Utf8TextTest::appendsPieceByPiece()
{
    Utf8Text out;
    QVERIFY(out.view().isEmpty());
    out.add("<");
    out.addXml(u"é&");
    out.add('>');
    out.addPercentEncoded(u"/ é");
    out.addText(u"&é");
    out.addNumber(-7);
    QCOMPARE(out.view().toByteArray(), QByteArray("<é&amp;>/%20%C3%A9&é-7"));
}

void Utf8TextTest::encodesText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("what other forms escape") << u"&<>\"'% /"_s;
    QTest::newRow("first and last of each size")
        << u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"_s;
    QTest::newRow("NUL") << u"a"_s + QChar::Null + u"b"_s;
}

void Utf8TextTest::encodesText()
{
    QFETCH(QString, text);
    Utf8Text out;
    out.addText(text);
    QCOMPARE(out.view().toByteArray(), text.toUtf8());
}

void Utf8TextTest::growsForWhateverIsAdded()
{
    // Each piece as long as it can get, at every place in the buffer.
    Utf8Text out;
    QByteArray expected;
    for (int round = 0; round < 300; ++round) {
        out.addXml(u"\"\"\"");
        out.addPercentEncoded(u"漢🎧");
        out.addText(u"漢漢");
        out.addNumber(std::numeric_limits<qint64>::min());
        out.add('.');
        out.add(QByteArray(round, 'x'));
        expected += "&quot;&quot;&quot;%E6%BC%A2%F0%9F%8E%A7漢漢-9223372036854775808";
        expected += '.' + QByteArray(round, 'x');
    }
    QCOMPARE(out.view().toByteArray(), expected);
}

void Utf8TextTest::beginsAnewInTheSameBuffer()
{
    Utf8Text out;
    out.addText(u"earlier text");
    const char *buffer = out.view().data();
    out.clear();
    QVERIFY(out.view().isEmpty());
    out.addText(u"later");
    QCOMPARE(out.view().toByteArray(), QByteArray("later"));
    QCOMPARE(out.view().data(), buffer);
}

void Utf8TextTest::writesWholeNumbers()
{
    Utf8Text out;
    for (const qint64 number : {qint64(0), qint64(-1), std::numeric_limits<qint64>::max()}) {
        out.addNumber(number);
        out.add(' ');
    }
    QCOMPARE(out.view().toByteArray(), QByteArray("0 -1 9223372036854775807 "));
}

QTEST_APPLESS_MAIN(Utf8TextTest)
#include "utf8_text_test.moc"
