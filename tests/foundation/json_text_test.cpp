#include "foundation/json_text.h"

#include <QTest>

using namespace tarnwick;

class JsonTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsAtItsMark_data();
    void endsAtItsMark();
    void findsSpecialBytesAtEveryOffset();
    void decodesEscapes_data();
    void decodesEscapes();
};

void JsonTextTest::endsAtItsMark_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<std::optional<QByteArray>>("encoded");
    QTest::addColumn<bool>("hasEscapes");
    const auto row = [](const char *bytes, std::optional<QByteArray> encoded,
                        bool hasEscapes = false) {
        QTest::newRow(bytes) << QByteArray(bytes) << encoded << hasEscapes;
    };
    row(R"("abc" "d")", "abc");
    row(R"("")", "");
    row(R"("a\"b",)", R"(a\"b)", true);
    row(R"("a\\"b")", R"(a\\)", true);
    row(R"("\x")", R"(\x)", true); // no escape, which is told by who decodes it
    row("\"é\x7F\"", "é\x7F");
    row("", std::nullopt);
    row("abc", std::nullopt);
    row(R"(")", std::nullopt);
    row(R"("abc)", std::nullopt);
    row(R"("abc\")", std::nullopt);
    row(R"("abc\)", std::nullopt);
    row("\"a\nb\"", std::nullopt);
    row("\"\xC3\"", std::nullopt);
    row("\"\xC3", std::nullopt);
}

void JsonTextTest::endsAtItsMark()
{
    QFETCH(QByteArray, bytes);
    const auto token = JsonText::at(bytes, 0);
    QTEST(token ? std::optional(token->encoded.toByteArray()) : std::nullopt, "encoded");
    QTEST(token && token->hasEscapes, "hasEscapes");
    const QByteArray array = "[1, " + bytes;
    const auto behind = JsonText::at(array, 4);
    QTEST(behind ? std::optional(behind->encoded.toByteArray()) : std::nullopt, "encoded");
}

void JsonTextTest::findsSpecialBytesAtEveryOffset()
{
    const auto isText = [](const QByteArray &bytes) {
        const auto token = JsonText::at(bytes, 0);
        return token && token->encoded.size() == bytes.size() - 2;
    };
    for (int offset = 0; offset < 100; ++offset) {
        const QByteArray plain(offset, 'x');
        QVERIFY(isText('"' + plain + "\\n" + plain + '"'));
        QVERIFY(isText('"' + plain + "\xC3\xA9" + plain + '"'));
        QVERIFY(!isText('"' + plain + '\x1F' + plain + '"'));
        QVERIFY(!isText('"' + plain + '\xFF' + plain + '"'));
        QVERIFY(!isText('"' + plain + '"' + plain + '"'));
        QVERIFY(!isText('"' + plain));
    }
}

void JsonTextTest::decodesEscapes_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<std::optional<QByteArray>>("bytes");
    QTest::addColumn<bool>("isWrittenForm");
    const auto row = [](const char *encoded, std::optional<QByteArray> bytes,
                        bool isWrittenForm = false) {
        QTest::newRow(encoded) << QByteArray(encoded) << bytes << isWrittenForm;
    };
    row("", "", true);
    row("aé", "aé", true);
    row(R"(\"\\\b\f\n\r\t)", "\"\\\b\f\n\r\t", true);
    row(R"(a\/b)", "a/b");
    row(R"(\u001f)", "\x1F", true);
    row(R"(\u001F)", "\x1F");
    row(R"(\u000a)", "\n"); // has a letter
    row(R"(\u0000)", QByteArray(1, '\0'), true);
    row(R"(\u0041)", "A");
    row(R"(x\u00e9y)", "xéy");
    row(R"(\ud83c\udfa7)", "\xF0\x9F\x8E\xA7");
    row(R"(\x41)", std::nullopt);
    row(R"(\)", std::nullopt);
    row(R"(\u12)", std::nullopt);
    row(R"(\uzzzz)", std::nullopt);
    row(R"(\u-001)", std::nullopt);
    row(R"(\ud83c)", std::nullopt);
    row(R"(\ud83c\u0041)", std::nullopt);
    row(R"(\ud83cudfa7)", std::nullopt);
    row(R"(\udfa7)", std::nullopt);
}

void JsonTextTest::decodesEscapes()
{
    QFETCH(QByteArray, encoded);
    const auto decoded = JsonText::decode(encoded);
    QTEST(decoded ? std::optional(decoded->bytes) : std::nullopt, "bytes");
    QTEST(decoded && decoded->isWrittenForm, "isWrittenForm");
}

QTEST_GUILESS_MAIN(JsonTextTest)
#include "json_text_test.moc"
