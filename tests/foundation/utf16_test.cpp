#include "foundation/utf16.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class Utf16Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesUnitsHighByteFirst_data();
    void decodesUnitsHighByteFirst();
    void encodesWhatItDecoded();
};

void Utf16Test::decodesUnitsHighByteFirst_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("text");
    const QString bad(QChar::ReplacementCharacter);
    const auto row = [](const QByteArray &name, const QByteArray &hex, const QString &text) {
        QTest::newRow(name.constData()) << hex << text;
    };
    row("empty", "", QString());
    row("letters", "00410062", u"Ab"_s);
    row("an odd last byte is dropped", "0041 00", u"A"_s);
    row("one byte alone", "41", QString());
    row("NUL stays", "0041 0000 0042", u"A"_s + QChar(0) + u"B"_s);
    row("a byte order mark stays", "FEFF 0041", u"\uFEFF\u0041"_s);
    row("the other byte order mark is no mark", "FFFE 0041", QString(QChar(0xFFFE)) + u'A');
    row("a pair", "D83C DFA7", u"\U0001F3A7"_s);
    row("a high surrogate alone", "D83C 0041", bad + u'A');
    row("a high surrogate at the end", "0041 D83C", u'A' + bad);
    row("a low surrogate alone", "DFA7 0041", bad + u'A');
    row("the wrong way round", "DFA7 D83C", bad + bad);
    for (int units = 3; units <= 9; ++units) {
        const QByteArray name = QByteArray::number(units) + " letters and a surrogate alone";
        row(name, QByteArray("0041 ").repeated(units) + "DFA7", QString(units, u'A') + bad);
        row(name + " ahead", "DFA7 " + QByteArray("0041 ").repeated(units),
            bad + QString(units, u'A'));
    }
    row("the units beside the surrogates", "D7FF E000 D7FF E000 D7FF",
        u"\uD7FF\uE000\uD7FF\uE000\uD7FF"_s);
    row("the unit behind a bad one is read afresh", "D83C D83C DFA7", bad + u"\U0001F3A7"_s);
}

void Utf16Test::decodesUnitsHighByteFirst()
{
    QFETCH(QByteArray, hex);
    QTEST(decodeUtf16BigEndian(QByteArray::fromHex(hex)), "text");
}

void Utf16Test::encodesWhatItDecoded()
{
    QCOMPARE(encodeUtf16BigEndian(u"Aé\U0001F3A7"), QByteArray::fromHex("0041 00E9 D83C DFA7"));
    QCOMPARE(encodeUtf16BigEndian(u""), QByteArray());
    const QByteArray bytes = QByteArray::fromHex("0041 0000 FEFF 3042");
    QCOMPARE(encodeUtf16BigEndian(decodeUtf16BigEndian(bytes)), bytes);
}

QTEST_GUILESS_MAIN(Utf16Test)
#include "utf16_test.moc"
