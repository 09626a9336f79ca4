#include "export/utf8_text.h"

#include <QTest>

#include <cfloat>
#include <clocale>
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
    void writesTwoDecimals_data();
    void writesTwoDecimals();
    void writesAPointInEveryLocale();
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
    out.addTwoDecimals(2);
    QCOMPARE(out.view().toByteArray(), QByteArray("<é&amp;>/%20%C3%A9&é-72.00"));
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
        out.addTwoDecimals(DBL_MAX);
        out.add('.');
        out.add(QByteArray(round, 'x'));
        expected += "&quot;&quot;&quot;%E6%BC%A2%F0%9F%8E%A7漢漢-9223372036854775808";
        expected += QByteArray::number(DBL_MAX, 'f', 2) + '.' + QByteArray(round, 'x');
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

void Utf8TextTest::writesTwoDecimals_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("whole") << 128.0 << QByteArray("128.00");
    QTest::newRow("below a hundredth") << 0.001 << QByteArray("0.00");
    QTest::newRow("rounded up") << 99.999 << QByteArray("100.00");
    QTest::newRow("a half, to even") << 0.125 << QByteArray("0.12");
    QTest::newRow("above a half") << 0.375 << QByteArray("0.38");
    QTest::newRow("the double below 1.005") << 1.005 << QByteArray("1.00");
    QTest::newRow("the largest") << DBL_MAX << QByteArray::number(DBL_MAX, 'f', 2);
}

void Utf8TextTest::writesTwoDecimals()
{
    QFETCH(double, number);
    Utf8Text out;
    out.addTwoDecimals(number);
    QTEST(out.view().toByteArray(), "text");
}

void Utf8TextTest::writesAPointInEveryLocale()
{
    for (const char *locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"}) {
        if (!std::setlocale(LC_ALL, locale))
            continue;
        Utf8Text out;
        out.addTwoDecimals(174.5);
        out.addNumber(1234567);
        QCOMPARE(out.view().toByteArray(), QByteArray("174.501234567"));
    }
}

QTEST_APPLESS_MAIN(Utf8TextTest)
#include "utf8_text_test.moc"
