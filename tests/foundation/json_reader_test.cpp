#include "foundation/json_reader.h"

#include "foundation/json_writer.h"

#include <QJsonDocument>
#include <QTest>

#include <limits>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

bool isValid(const QByteArray &bytes)
{
    JsonReader json(bytes);
    return json.skip() && json.end();
}

} // namespace

class JsonReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesAnyValidJson_data();
    void takesAnyValidJson();
    void refusesWhatIsNoJson_data();
    void refusesWhatIsNoJson();
    void refusesEveryCutOfAFile();
    void reportsMembersAndElementsInOrder();
    void readsTexts_data();
    void readsTexts();
    void sharesItsBytesWhereNothingIsEscaped();
    void readsWholeNumbersExactly_data();
    void readsWholeNumbersExactly();
    void readsNumbers();
    void coercesNothing_data();
    void coercesNothing();
    void failsForGood();
    void stopsAtNestingTooDeep();
    void knowsTheFormOfTheWriter_data();
    void knowsTheFormOfTheWriter();
    void readsBackWhatTheWriterWrote();
};

void JsonReaderTest::takesAnyValidJson_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const QByteArray &bytes) {
        QTest::newRow(name) << bytes;
    };
    row("empty object", "{}");
    row("empty array", "[]");
    row("white space everywhere", " \t\r\n[ 1 ,\n{ \"a\" : null } ] \n");
    row("a text alone", "\"x\"");
    row("words", "[true,false,null]");
    row("numbers", "[0,-0,1.5,-1e10,1E+2,1e-2,0.0]");
    row("equal keys", R"({"a":1,"a":2})");
    row("an empty key", R"({"":1})");
    row("every escape", R"("\"\\\/\b\f\n\r\t\u0041\ud83c\udfa7")");
    row("UTF-8 of every length",
        "\"\x7F \xC2\x80 \xE0\xA0\x80 \xED\x9F\xBF \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF\"");
    row("a mark of UTF-8 ahead", "\xEF\xBB\xBF[]");
    row("nesting", QByteArray(500, '[') + QByteArray(500, ']'));
}

void JsonReaderTest::takesAnyValidJson()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(isValid(bytes));
}

void JsonReaderTest::refusesWhatIsNoJson_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const QByteArray &bytes) {
        QTest::newRow(name) << bytes;
    };
    row("nothing", "");
    row("white space", " \n");
    row("something behind", "[] x");
    row("two values", "1 2");
    row("a comma behind the last", "[1,]");
    row("a comma behind the last member", R"({"a":1,})");
    row("a comma ahead", "[,1]");
    row("no comma", "[1 2]");
    row("no comma between members", R"({"a":1 "b":2})");
    row("no colon", R"({"a" 1})");
    row("no value", R"({"a":})");
    row("no key", "{1:2}");
    row("wrong bracket", "[1}");
    row("a key without quotation marks", "{a:1}");
    row("single quotation marks", "['a']");
    row("a comment", "[1 /* one */]");
    row("words in capitals", "[True]");
    row("a word cut", "[nul]");
    row("a word too long", "[nulll]");
    row("not a number", "[NaN]");
    row("zeros ahead", "[01]");
    row("plus", "[+1]");
    row("a point without digits", "[1.]");
    row("a point alone", "[.5]");
    row("an exponent without digits", "[1e]");
    row("a sign alone", "[-]");
    row("hexadecimal", "[0x10]");
    row("a line break in a text", "[\"a\nb\"]");
    row("NUL in a text", QByteArray("[\"a\0\"]", 6));
    row("an unknown escape", R"(["\x41"])");
    row("an escape cut", R"(["\u12"])");
    row("an escape of no digits", R"(["\uzzzz"])");
    row("a high surrogate alone", R"(["\ud83c"])");
    row("a high surrogate and no low one", R"(["\ud83c\u0041"])");
    row("a low surrogate alone", R"(["\udfa7"])");
    row("UTF-8: a byte of the middle alone", "[\"\x80\"]");
    row("UTF-8: form too long, two bytes", "[\"\xC0\xAF\"]");
    row("UTF-8: form too long, three bytes", "[\"\xE0\x9F\xBF\"]");
    row("UTF-8: form too long, four bytes", "[\"\xF0\x8F\xBF\xBF\"]");
    row("UTF-8: a surrogate", "[\"\xED\xA0\x80\"]");
    row("UTF-8: past the last character", "[\"\xF4\x90\x80\x80\"]");
    row("UTF-8: no such lead", "[\"\xF5\x80\x80\x80\"]");
    row("UTF-8: cut", "[\"\xE2\x80\"]");
    row("UTF-8: cut by the end", "\"\xE2\x80");
    row("UTF-16", QByteArray("\xFF\xFE[\0]\0", 6));
}

void JsonReaderTest::refusesWhatIsNoJson()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!isValid(bytes));
    if (QByteArray(QTest::currentDataTag()) != "a high surrogate alone")
        return;
    QVERIFY(QJsonDocument::fromJson(bytes).isArray()); // a difference to Qt's reader, on purpose
}

void JsonReaderTest::refusesEveryCutOfAFile()
{
    const QByteArray whole = R"({"a": [1, "é\n\u00e9", {"b": null}], "c": -1.5e3, "d": true})";
    QVERIFY(isValid(whole));
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QByteArray cut(whole.constData(), length); // of its own, so that a sanitizer sees it
        QVERIFY2(!isValid(cut), cut.constData());
    }
}

void JsonReaderTest::reportsMembersAndElementsInOrder()
{
    const QByteArray bytes = R"({"b": [1, 2], "a\u0062": [], "b": [3]})";
    JsonReader json(bytes);
    QStringList seen;
    const bool good = json.object([&](QByteArrayView key) {
        seen << QString::fromUtf8(key);
        return json.array([&] {
            quint64 number = 0;
            const bool read = json.whole(number);
            seen << QString::number(number);
            return read;
        });
    });
    QVERIFY(good && json.end());
    QCOMPARE(seen, (QStringList{u"b"_s, u"1"_s, u"2"_s, u"ab"_s, u"b"_s, u"3"_s}));
}

void JsonReaderTest::readsTexts_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &encoded, const QString &text) {
        QTest::newRow(name) << '"' + encoded + '"' << text;
    };
    row("empty", "", u""_s);
    row("plain", "abc", u"abc"_s);
    row("escapes", R"(\"\\\/\b\f\n\r\t)", u"\"\\/\b\f\n\r\t"_s);
    row("by number", R"(\u00e9\u00E9\u0000)", u"éé"_s + QChar(0));
    row("a pair by number", R"(\uD83C\uDFA7)", u"\U0001F3A7"_s);
    row("UTF-8", "é\xF0\x9F\x8E\xA7", u"é\U0001F3A7"_s);
    row("a byte order mark is a character", "\xEF\xBB\xBFx", u"\uFEFFx"_s);
    row("a byte order mark by number", R"(\ufeffx)", u"\uFEFFx"_s);
    row("no character", "\xEF\xBF\xBF", QString(QChar(0xFFFF)));
}

void JsonReaderTest::readsTexts()
{
    QFETCH(QByteArray, encoded);
    QFETCH(QString, text);
    QString read;
    QVERIFY(JsonReader(encoded).text(read));
    QCOMPARE(read, text);
    QByteArray bytes;
    QVERIFY(JsonReader(encoded).utf8(bytes));
    QCOMPARE(bytes, text.toUtf8());
    QCOMPARE(JsonReader::toText(bytes), text);
}

void JsonReaderTest::sharesItsBytesWhereNothingIsEscaped()
{
    const QByteArray plain = R"("abc")";
    const QByteArray escaped = R"("a\nc")";
    QByteArray out;
    QVERIFY(JsonReader(plain).utf8(out));
    QCOMPARE(out.constData(), plain.constData() + 1);
    QVERIFY(JsonReader(escaped).utf8(out));
    QCOMPARE(out, QByteArray("a\nc"));
}

void JsonReaderTest::readsWholeNumbersExactly_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<std::optional<quint64>>("asUnsigned");
    QTest::addColumn<std::optional<qint64>>("asSigned");
    const auto row = [](const char *bytes, std::optional<quint64> asUnsigned,
                        std::optional<qint64> asSigned) {
        QTest::newRow(bytes) << QByteArray(bytes) << asUnsigned << asSigned;
    };
    row("0", 0, 0);
    row("-0", 0, 0);
    row("-1", std::nullopt, -1);
    row("9007199254740993", 9007199254740993, 9007199254740993);
    row("9223372036854775807", 9223372036854775807, 9223372036854775807);
    row("9223372036854775808", 9223372036854775808ULL, std::nullopt);
    row("-9223372036854775808", std::nullopt, std::numeric_limits<qint64>::min());
    row("-9223372036854775809", std::nullopt, std::nullopt);
    row("18446744073709551615", 18446744073709551615ULL, std::nullopt);
    row("18446744073709551616", std::nullopt, std::nullopt);
    row("5.0", 5, 5);
    row("-5.0", std::nullopt, -5);
    row("1e3", 1000, 1000);
    row("5.5", std::nullopt, std::nullopt);
    row("1e-1", std::nullopt, std::nullopt);
    row("1e300", std::nullopt, std::nullopt);
    row("1e-400", std::nullopt, std::nullopt);
    row("0e-400", 0, 0);
}

void JsonReaderTest::readsWholeNumbersExactly()
{
    QFETCH(QByteArray, bytes);
    quint64 asUnsigned = 0;
    qint64 asSigned = 0;
    const bool isUnsigned = JsonReader(bytes).whole(asUnsigned);
    const bool isSigned = JsonReader(bytes).whole(asSigned);
    QTEST(isUnsigned ? std::optional(asUnsigned) : std::nullopt, "asUnsigned");
    QTEST(isSigned ? std::optional(asSigned) : std::nullopt, "asSigned");
}

void JsonReaderTest::readsNumbers()
{
    double value = 0;
    QVERIFY(JsonReader("-3.25").number(value));
    QCOMPARE(value, -3.25);
    QVERIFY(JsonReader("7").number(value));
    QCOMPARE(value, 7.0);
    QVERIFY(!JsonReader("1e999").number(value));
}

void JsonReaderTest::coercesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("type");
    for (const auto &[type, bytes] :
         std::initializer_list<std::pair<const char *, const char *>>{{"text", "\"5\""},
                                                                      {"whole", "5"},
                                                                      {"boolean", "true"},
                                                                      {"null", "null"},
                                                                      {"array", "[]"},
                                                                      {"object", "{}"}})
        QTest::newRow(type) << QByteArray(bytes) << QString::fromLatin1(type);
}

void JsonReaderTest::coercesNothing()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, type);
    QString text;
    quint64 whole = 0;
    bool flag = false;
    double number = 0;
    QCOMPARE(JsonReader(bytes).text(text), type == u"text"_s);
    QCOMPARE(JsonReader(bytes).whole(whole), type == u"whole"_s);
    QCOMPARE(JsonReader(bytes).number(number), type == u"whole"_s);
    QCOMPARE(JsonReader(bytes).boolean(flag), type == u"boolean"_s);
    QCOMPARE(JsonReader(bytes).takeNull(), type == u"null"_s);
    QCOMPARE(JsonReader(bytes).array([] { return true; }), type == u"array"_s);
    QCOMPARE(JsonReader(bytes).object([](QByteArrayView) { return true; }), type == u"object"_s);
}

void JsonReaderTest::failsForGood()
{
    JsonReader json("[1, \"a\"]");
    QString text;
    QVERIFY(!json.array([&] { return json.text(text); }));
    QVERIFY(!json.skip());
    QVERIFY(!json.end());
}

void JsonReaderTest::stopsAtNestingTooDeep()
{
    for (const char bracket : {'[', '{'}) {
        const QByteArray unit = bracket == '[' ? QByteArray("[") : QByteArray("{\"a\":");
        QVERIFY(!isValid(unit.repeated(1'000'000)));
    }
}

void JsonReaderTest::knowsTheFormOfTheWriter_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isWritten");
    const auto row = [](const char *name, const QByteArray &bytes, bool isWritten) {
        QTest::newRow(name) << bytes << isWritten;
    };
    row("written", "[\n  {\n    \"a\": 1,\n    \"b\": \"\\n\\u001f\\\"\"\n  },\n  true\n]", true);
    row("empty", "[]", true);
    row("a blank in empty brackets", "[ ]", false);
    row("compact", "[1,2]", false);
    row("four blanks", "[\n    1\n]", false);
    row("a tab", "[\n\t\t1\n]", false);
    row("no indent of the end", "[\n  1\n  ]", false);
    row("carriage return", "[\r\n  1\r\n]", false);
    row("a blank ahead of the comma", "[\n  1 ,\n  2\n]", false);
    row("a blank ahead of the colon", "{\n  \"a\" : 1\n}", false);
    row("no blank behind the colon", "{\n  \"a\":1\n}", false);
    row("two blanks behind the colon", "{\n  \"a\":  1\n}", false);
    row("a line break behind the colon", "{\n  \"a\":\n1\n}", false);
    row("an escaped slash", "[\n  \"\\/\"\n]", false);
    row("a letter by number", "[\n  \"\\u0041\"\n]", false);
    row("a line break by number", "[\n  \"\\u000a\"\n]", false);
    row("capital digits", "[\n  \"\\u001F\"\n]", false);
    row("a whole number with a fraction", "[\n  1.0\n]", false);
    row("minus zero", "[\n  -0\n]", false);
}

void JsonReaderTest::knowsTheFormOfTheWriter()
{
    QFETCH(QByteArray, bytes);
    JsonReader json(bytes);
    json.watchForm();
    const auto readValue = [&](auto &&self) -> bool {
        const char first = bytes.at(json.valueStart());
        QString text;
        quint64 number = 0;
        bool flag = false;
        if (first == '[')
            return json.array([&] { return self(self); });
        if (first == '{')
            return json.object([&](QByteArrayView) { return self(self); });
        return first == '"'   ? json.text(text)
               : first == 't' ? json.boolean(flag)
                              : json.whole(number);
    };
    QVERIFY(readValue(readValue));
    QTEST(json.hasWrittenForm(), "isWritten");
}

void JsonReaderTest::readsBackWhatTheWriterWrote()
{
    QString all;
    for (char32_t unit = 0; unit < 0x3000; ++unit)
        all.append(QChar(char16_t(unit)));
    all.append(u"\U0001F3A7"_s);
    QByteArray bytes;
    JsonWriter(bytes).value(all);
    JsonReader json(bytes);
    json.watchForm();
    QString read;
    QVERIFY(json.text(read) && json.end());
    QCOMPARE(read, all);
    QVERIFY(json.hasWrittenForm());
}

QTEST_GUILESS_MAIN(JsonReaderTest)
#include "json_reader_test.moc"
