#include "foundation/numbers.h"

#include "support/comma_locale.h"

#include <QTest>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class NumbersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void roundsPercentages_data();
    void roundsPercentages();
    void leavesTheExactPercentageToBeTruncated();
    void parsesADoubleOverItsWholeLength_data();
    void parsesADoubleOverItsWholeLength();
    void parsesDecimalsAsTheCLibraryDoes();
    void refusesWhatIsNoDoubleAsAWhole_data();
    void refusesWhatIsNoDoubleAsAWhole();
    void takesNoTempoThatIsNotFinite_data();
    void takesNoTempoThatIsNotFinite();
    void parsesWholeNumbers_data();
    void parsesWholeNumbers();
    void writesTwoDecimals_data();
    void writesTwoDecimals();
    void writesOneDecimalWithOrWithoutASign_data();
    void writesOneDecimalWithOrWithoutASign();
    void writesAPointInEveryLocale();
};

void NumbersTest::roundsPercentages_data()
{
    QTest::addColumn<qint64>("a");
    QTest::addColumn<qint64>("b");
    QTest::addColumn<int>("rounded");
    const auto row = [](qint64 a, qint64 b, int rounded) {
        QTest::addRow("%lld of %lld", a, b) << a << b << rounded;
    };
    row(0, 0, 100);
    row(5, 0, 100);
    row(0, 7, 0);
    row(1, 1, 100);
    row(1, 200, 1);
    row(57, 200, 28); // 28.499999999999996 in this order of the operations
    row(1, 8, 13);
    row(3, 8, 38);
    row(2, 3, 67);
    row(3, 2, 150);
    row(-1, 200, -1);
}

void NumbersTest::roundsPercentages()
{
    QFETCH(qint64, a);
    QFETCH(qint64, b);
    QFETCH(int, rounded);
    QCOMPARE(percent(a, b), rounded);
}

void NumbersTest::leavesTheExactPercentageToBeTruncated()
{
    QCOMPARE(int(exactPercent(29, 50)), 57);
    QCOMPARE(int(exactPercent(1, 2)), 50);
    QCOMPARE(exactPercent(3, 0), 100.0);
}

void NumbersTest::parsesADoubleOverItsWholeLength_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    const auto row = [](const char *text, double value) {
        QTest::newRow(text) << QString::fromLatin1(text) << value;
    };
    row("128", 128);
    row("128.00", 128);
    row("-3.2", -3.2);
    row("+5", 5);
    row(".5", 0.5);
    row("5.", 5);
    row("1e2", 100);
    row("1E-2", 0.01);
    row("0x10", 16);
    row("0x1p3", 8);
    row("1e400", std::numeric_limits<double>::infinity());
    row("-inf", -std::numeric_limits<double>::infinity());
    row("Infinity", std::numeric_limits<double>::infinity());
    row("nan", std::numeric_limits<double>::quiet_NaN());
}

void NumbersTest::parsesADoubleOverItsWholeLength()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    // Whatever locale a library has set meanwhile.
    const ScopedCommaLocale locale;
    const auto parsed = parseDouble(text);
    QVERIFY(parsed.has_value());
    QVERIFY(*parsed == value || (std::isnan(*parsed) && std::isnan(value)));
    QVERIFY(parseDouble(QByteArrayView(text.toLatin1())).has_value());
}

void NumbersTest::parsesDecimalsAsTheCLibraryDoes()
{
    std::mt19937_64 random(5);
    std::setlocale(LC_ALL, "C");
    for (int round = 0; round < 20'000; ++round) {
        // One to eighteen digits, the point at any place or none.
        QByteArray text = QByteArray::number(quint64(random() % 1'000'000'000'000'000'000));
        text.truncate(1 + qsizetype(random() % 18));
        if (const auto point = qsizetype(random() % 20); point <= text.size())
            text.insert(point, '.');
        const std::optional<double> value = parseDouble(QString::fromLatin1(text));
        QVERIFY2(value == std::strtod(text.constData(), nullptr), text.constData());
    }
}

void NumbersTest::refusesWhatIsNoDoubleAsAWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("a blank ahead") << u" 1"_s;
    QTest::newRow("a tab ahead") << u"\t1"_s;
    QTest::newRow("a line break ahead") << u"\n1"_s;
    QTest::newRow("a blank behind") << u"1 "_s;
    QTest::newRow("a unit behind") << u"1 dB"_s;
    QTest::newRow("a decimal comma") << u"1,5"_s;
    QTest::newRow("letters") << u"abc"_s;
    QTest::newRow("a point alone") << u"."_s;
    QTest::newRow("two points") << u"1.2.3"_s;
    QTest::newRow("a sign alone") << u"-"_s;
    QTest::newRow("an exponent without digits") << u"1e"_s;
    QTest::newRow("hexadecimal without digits") << u"0x"_s;
    QTest::newRow("NUL behind") << u"1"_s + QChar(0);
    QTest::newRow("digits of another script") << u"１"_s;
    QTest::newRow("no-break blank ahead") << u"\u00A0"
                                             "1"_s;
}

void NumbersTest::refusesWhatIsNoDoubleAsAWhole()
{
    QFETCH(QString, text);
    QVERIFY(!parseDouble(text));
    QVERIFY(!parseTempo(text));
}

void NumbersTest::takesNoTempoThatIsNotFinite_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTempo");
    QTest::newRow("finite") << u"128.5"_s << true;
    QTest::newRow("negative") << u"-1"_s << true;
    QTest::newRow("nan") << u"nan"_s << false;
    QTest::newRow("inf") << u"inf"_s << false;
    QTest::newRow("overflow") << u"1e999"_s << false;
}

void NumbersTest::takesNoTempoThatIsNotFinite()
{
    QFETCH(QString, text);
    QFETCH(bool, isTempo);
    QCOMPARE(parseTempo(text).has_value(), isTempo);
}

void NumbersTest::parsesWholeNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<qint64>>("value");
    const auto row = [](const char *name, const QString &text, std::optional<qint64> value) {
        QTest::newRow(name) << text << value;
    };
    row("plain", u"240"_s, 240);
    row("zeros ahead", u"007"_s, 7);
    row("plus", u"+5"_s, 5);
    row("minus", u"-5"_s, -5);
    row("largest", u"9223372036854775807"_s, std::numeric_limits<qint64>::max());
    row("smallest", u"-9223372036854775808"_s, std::numeric_limits<qint64>::min());
    row("eighteen digits", u"-999999999999999999"_s, -999'999'999'999'999'999);
    row("nineteen digits", u"1000000000000000000"_s, 1'000'000'000'000'000'000);
    row("many zeros ahead", u"00000000000000000000005"_s, 5);
    row("one past the largest", u"9223372036854775808"_s, std::nullopt);
    row("empty", u""_s, std::nullopt);
    row("sign alone", u"-"_s, std::nullopt);
    row("two signs", u"--5"_s, std::nullopt);
    row("a blank", u" 5"_s, std::nullopt);
    row("a point", u"5.0"_s, std::nullopt);
    row("a group mark", u"1,000"_s, std::nullopt);
    row("hexadecimal", u"0x10"_s, std::nullopt);
    row("digits of another script", u"٥"_s, std::nullopt);
}

void NumbersTest::parsesWholeNumbers()
{
    QFETCH(QString, text);
    QFETCH(std::optional<qint64>, value);
    QCOMPARE(parseWhole(text), value);
}

void NumbersTest::writesTwoDecimals_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("whole") << 128.0 << QByteArray("128.00");
    QTest::newRow("nought") << 0.0 << QByteArray("0.00");
    QTest::newRow("below nought") << -3.2 << QByteArray("-3.20");
    QTest::newRow("nought from below") << -0.001 << QByteArray("-0.00");
    QTest::newRow("below a hundredth") << 0.001 << QByteArray("0.00");
    QTest::newRow("rounded up") << 99.999 << QByteArray("100.00");
    QTest::newRow("a half, to even") << 0.125 << QByteArray("0.12");
    QTest::newRow("above a half") << 0.375 << QByteArray("0.38");
    QTest::newRow("the double below 1.005") << 1.005 << QByteArray("1.00");
    QTest::newRow("no grouping") << 1234567.5 << QByteArray("1234567.50");
    QTest::newRow("the largest") << DBL_MAX << QByteArray::number(DBL_MAX, 'f', 2);
    QTest::newRow("the smallest") << -DBL_MAX << QByteArray::number(-DBL_MAX, 'f', 2);
}

void NumbersTest::writesTwoDecimals()
{
    QFETCH(double, number);
    QTEST(twoDecimals(number), "text");
}

void NumbersTest::writesOneDecimalWithOrWithoutASign_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("plain");
    QTest::addColumn<QByteArray>("withSign");
    QTest::newRow("nought") << 0.0 << QByteArray("0.0") << QByteArray("+0.0");
    QTest::newRow("above") << 12.34 << QByteArray("12.3") << QByteArray("+12.3");
    QTest::newRow("below") << -2.06 << QByteArray("-2.1") << QByteArray("-2.1");
    QTest::newRow("nought from below") << -0.04 << QByteArray("-0.0") << QByteArray("-0.0");
    QTest::newRow("a half, to even") << 2.25 << QByteArray("2.2") << QByteArray("+2.2");
    QTest::newRow("above a half") << 0.75 << QByteArray("0.8") << QByteArray("+0.8");
}

void NumbersTest::writesOneDecimalWithOrWithoutASign()
{
    QFETCH(double, number);
    QTEST(oneDecimal(number), "plain");
    QTEST(signedOneDecimal(number), "withSign");
}

void NumbersTest::writesAPointInEveryLocale()
{
    const ScopedCommaLocale locale;
    QCOMPARE(oneDecimal(174.5), QByteArray("174.5"));
    QCOMPARE(twoDecimals(174.5), QByteArray("174.50"));
}

QTEST_GUILESS_MAIN(NumbersTest)
#include "numbers_test.moc"
