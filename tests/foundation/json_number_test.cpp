#include "foundation/json_number.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class JsonNumberTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsWhereTheGrammarEnds_data();
    void endsWhereTheGrammarEnds();
    void statesOnlyWhatADoubleComesNearTo_data();
    void statesOnlyWhatADoubleComesNearTo();
    void isWholeHoweverItIsWritten_data();
    void isWholeHoweverItIsWritten();
};

void JsonNumberTest::endsWhereTheGrammarEnds_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("token"); // empty for none
    QTest::addColumn<bool>("isWhole");
    const auto row = [](const char *bytes, const char *token, bool isWhole = false) {
        QTest::newRow(bytes) << QByteArray(bytes) << QByteArray(token) << isWhole;
    };
    row("0", "0", true);
    row("-0", "-0", true);
    row("120]", "120", true);
    row("12a", "12", true);
    row("1.50,", "1.50");
    row("1e5 ", "1e5");
    row("1E+05", "1E+05");
    row("-1.5e-3}", "-1.5e-3");
    row("", "");
    row("-", "");
    row("+1", "");
    row("01", "");
    row(".5", "");
    row("1.", "");
    row("1.e5", "");
    row("1e", "");
    row("1e+", "");
    row("inf", "");
    row("0x10", "0", true);
}

void JsonNumberTest::endsWhereTheGrammarEnds()
{
    QFETCH(QByteArray, bytes);
    const auto token = JsonNumber::at(bytes);
    QTEST(token ? token->text.toByteArray() : QByteArray(), "token");
    QTEST(token && token->isWhole, "isWhole");
}

void JsonNumberTest::statesOnlyWhatADoubleComesNearTo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<std::optional<double>>("number");
    const auto row = [](const char *text, std::optional<double> number) {
        QTest::newRow(text) << QByteArray(text) << number;
    };
    row("1.5", 1.5);
    row("-12", -12);
    row("0", 0);
    row("0.00e-5000", 0);
    row("1e308", 1e308);
    row("1e309", std::nullopt);
    row("-1e309", std::nullopt);
    row("5e-324", 5e-324);
    row("1e-400", std::nullopt);
    row("-0.001E-400", std::nullopt);
}

void JsonNumberTest::statesOnlyWhatADoubleComesNearTo()
{
    QFETCH(QByteArray, text);
    QTEST(JsonNumber::toDouble(text), "number");
}

void JsonNumberTest::isWholeHoweverItIsWritten_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<std::optional<qint64>>("number");
    const auto row = [](const char *text, std::optional<qint64> number) {
        QTest::newRow(text) << QByteArray(text) << number;
    };
    row("-7", -7);
    row("-0", 0);
    row("1.2e1", 12);
    row("1.2", std::nullopt);
    row("9007199254740993", 9007199254740993);
    row("9.007199254740991e15", 9007199254740991);
    row("-9.007199254740991e15", -9007199254740991);
    row("9007199254740993.0", std::nullopt);
    row("1e-400", std::nullopt);
    row("9223372036854775808", std::nullopt);
}

void JsonNumberTest::isWholeHoweverItIsWritten()
{
    QFETCH(QByteArray, text);
    const auto token = JsonNumber::at(text);
    QVERIFY(token.has_value());
    QTEST(JsonNumber::toWhole<qint64>(*token), "number");
}

QTEST_APPLESS_MAIN(JsonNumberTest)
#include "json_number_test.moc"
