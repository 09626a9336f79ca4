#include "foundation/text.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class TextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsBlanksFromLineBreaks_data();
    void tellsBlanksFromLineBreaks();
    void knowsNoOtherWhiteSpace();
    void trimsBothEndsAndNothingBetween();
    void lowersByTheSameMappingEverywhere_data();
    void lowersByTheSameMappingEverywhere();
};

namespace {

const QList<char16_t> blanks = {0x09,   0x20,   0xA0,   0x1680, 0x2000, 0x2001,
                                0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x2007,
                                0x2008, 0x2009, 0x200A, 0x202F, 0x205F, 0x3000};
const QList<char16_t> breaks = {0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029};

} // namespace

void TextTest::tellsBlanksFromLineBreaks_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<bool>("blank");
    for (const char16_t unit : blanks)
        QTest::addRow("U+%04X", unsigned(unit)) << QChar(unit) << true;
    for (const char16_t unit : breaks)
        QTest::addRow("U+%04X", unsigned(unit)) << QChar(unit) << false;
}

void TextTest::tellsBlanksFromLineBreaks()
{
    QFETCH(QChar, character);
    QFETCH(bool, blank);
    QCOMPARE(isBlank(character), blank);
    QVERIFY(isWhiteSpace(character));
}

void TextTest::knowsNoOtherWhiteSpace()
{
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t code = char16_t(unit);
        QCOMPARE(isBlank(QChar(code)), blanks.contains(code));
        QCOMPARE(isWhiteSpace(QChar(code)), blanks.contains(code) || breaks.contains(code));
    }
}

void TextTest::trimsBothEndsAndNothingBetween()
{
    QCOMPARE(trimmedBlanks(u" \t a b\u00A0").toString(), u"a b"_s);
    QCOMPARE(trimmedBlanks(u" \na\n ").toString(), u"\na\n"_s);
    QCOMPARE(trimmedBlanks(u" \t ").toString(), QString());
    QCOMPARE(trimmedBlanks(u"").toString(), QString());
    QCOMPARE(trimmedWhiteSpace(u"\r\n\u2028 a\n b \u0085\v").toString(), u"a\n b"_s);
    QCOMPARE(trimmedWhiteSpace(u"\n \n").toString(), QString());
    QCOMPARE(trimmedWhiteSpace(u"\u200Bx").toString(), u"\u200Bx"_s);
}

void TextTest::lowersByTheSameMappingEverywhere_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("lower");
    QTest::newRow("ASCII") << u"AbC"_s << u"abc"_s;
    QTest::newRow("accents") << u"ÉÄØ"_s << u"éäø"_s;
    QTest::newRow("Greek") << u"ΣΑ"_s << u"σα"_s;
    QTest::newRow("sharp s stays") << u"ß"_s << u"ß"_s;
    QTest::newRow("no Turkish rule") << u"I"_s << u"i"_s;
    QTest::newRow("beyond the first plane") << u"\U00010400"_s << u"\U00010428"_s;
}

void TextTest::lowersByTheSameMappingEverywhere()
{
    QFETCH(QString, text);
    qputenv("LC_ALL", "tr_TR.UTF-8");
    QTEST(lowerCased(text), "lower");
}

QTEST_GUILESS_MAIN(TextTest)
#include "text_test.moc"
