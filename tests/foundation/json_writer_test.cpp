#include "foundation/json_writer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <limits>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class JsonWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesPrettyWithTwoBlanks();
    void writesCompact();
    void writesEmptyBracketsOnOneLine();
    void writesAPartOfAPrettyText();
    void escapesOnlyWhatItMust_data();
    void escapesOnlyWhatItMust();
    void writesValues_data();
    void writesValues();
    void takesEncodedTextAsItStands();
    void writesWhatAnotherReaderReadsBack();
};

void JsonWriterTest::writesPrettyWithTwoBlanks()
{
    QByteArray out;
    JsonWriter json(out, JsonWriter::Style::Pretty);
    json.beginObject();
    json.member(u"a", 1);
    json.key(u"b");
    json.beginArray();
    json.beginObject();
    json.member(u"c", u"x"_s);
    json.endObject();
    json.value(true);
    json.endArray();
    json.endObject();
    QCOMPARE(out, QByteArray("{\n"
                             "  \"a\": 1,\n"
                             "  \"b\": [\n"
                             "    {\n"
                             "      \"c\": \"x\"\n"
                             "    },\n"
                             "    true\n"
                             "  ]\n"
                             "}"));
}

void JsonWriterTest::writesCompact()
{
    QByteArray out;
    JsonWriter json(out);
    json.beginObject();
    json.member(u"a", std::optional<int>());
    json.key(u"b");
    json.beginArray();
    json.value(1);
    json.value(2);
    json.endArray();
    json.endObject();
    QCOMPARE(out, QByteArray("{\"a\":null,\"b\":[1,2]}"));
}

void JsonWriterTest::writesEmptyBracketsOnOneLine()
{
    QByteArray out;
    JsonWriter json(out, JsonWriter::Style::Pretty);
    json.beginObject();
    json.key(u"list");
    json.beginArray();
    json.endArray();
    json.endObject();
    QCOMPARE(out, QByteArray("{\n  \"list\": []\n}"));
}

void JsonWriterTest::writesAPartOfAPrettyText()
{
    QByteArray part;
    JsonWriter json = JsonWriter::within(part, 1);
    json.beginObject();
    json.member(u"a", 1);
    json.member(u"b", 2);
    json.endObject();
    QCOMPARE(part, QByteArray("{\n    \"a\": 1,\n    \"b\": 2\n  }"));
    QByteArray out;
    JsonWriter whole(out, JsonWriter::Style::Pretty);
    whole.beginArray();
    whole.encoded(part);
    whole.endArray();
    QCOMPARE(out, QByteArray("[\n  {\n    \"a\": 1,\n    \"b\": 2\n  }\n]"));
}

void JsonWriterTest::escapesOnlyWhatItMust_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("quoted");
    const auto row = [](const char *name, const QString &text, const QByteArray &quoted) {
        QTest::newRow(name) << text << '"' + quoted + '"';
    };
    row("plain", u"abc"_s, "abc");
    row("a slash stays", u"a/b"_s, "a/b");
    row("quotation mark and backslash", u"\"\\"_s, R"(\"\\)");
    row("controls with a letter", u"\b\f\n\r\t"_s, R"(\b\f\n\r\t)");
    row("other controls", QString(QChar(0)) + QChar(0x1F), R"(\u0000\u001f)");
    row("delete stays", QString(QChar(0x7F)), "\x7F");
    row("two bytes", u"é"_s, "\xC3\xA9");
    row("three bytes", u"“\u2028"_s, "\xE2\x80\x9C\xE2\x80\xA8");
    row("four bytes", u"\U0001F3A7"_s, "\xF0\x9F\x8E\xA7");
    row("a high surrogate alone", QString(QChar(0xD83C)) + u'x', "\xEF\xBF\xBDx");
    row("a low surrogate alone", u"x"_s + QChar(0xDFA7), "x\xEF\xBF\xBD");
    row("a high surrogate at the end", u"x"_s + QChar(0xD83C), "x\xEF\xBF\xBD");
}

void JsonWriterTest::escapesOnlyWhatItMust()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, quoted);
    QByteArray out;
    JsonWriter::appendQuoted(out, text);
    QCOMPARE(out, quoted);
}

void JsonWriterTest::writesValues_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QByteArray>("wanted");
    const auto row = [](const char *name, auto value, const QByteArray &wanted) {
        QByteArray out;
        JsonWriter(out).value(value);
        QTest::newRow(name) << out << wanted;
    };
    row("largest unsigned", std::numeric_limits<quint64>::max(), "18446744073709551615");
    row("smallest signed", std::numeric_limits<qint64>::min(), "-9223372036854775808");
    row("past a double's digits", quint64(9007199254740993), "9007199254740993");
    row("a fraction", -3.2, "-3.2");
    row("a third", 1.0 / 3.0, "0.3333333333333333");
    row("not a number", std::numeric_limits<double>::quiet_NaN(), "null");
    row("without end", std::numeric_limits<double>::infinity(), "null");
    row("false", false, "false");
    row("text", u"x"_s, "\"x\"");
    row("an optional with a value", std::optional<QString>(u"y"_s), "\"y\"");
    row("an optional without", std::optional<QString>(), "null");
}

void JsonWriterTest::writesValues()
{
    QFETCH(QByteArray, written);
    QFETCH(QByteArray, wanted);
    QCOMPARE(written, wanted);
}

void JsonWriterTest::takesEncodedTextAsItStands()
{
    QByteArray out;
    JsonWriter json(out);
    json.beginArray();
    json.encoded("{ \"kept\" : 1 }");
    json.value(2);
    json.endArray();
    QCOMPARE(out, QByteArray("[{ \"kept\" : 1 },2]"));
}

void JsonWriterTest::writesWhatAnotherReaderReadsBack()
{
    QString all;
    for (char16_t unit = 0; unit < 0x300; ++unit)
        all.append(QChar(unit));
    QByteArray out;
    JsonWriter json(out, JsonWriter::Style::Pretty);
    json.beginArray();
    json.value(all);
    json.endArray();
    QCOMPARE(QJsonDocument::fromJson(out).array().at(0).toString(), all);
}

QTEST_GUILESS_MAIN(JsonWriterTest)
#include "json_writer_test.moc"
