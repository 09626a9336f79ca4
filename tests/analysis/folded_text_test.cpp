#include "analysis/folded_text.h"

#include "foundation/text.h"
#include "support/random_library.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class FoldedTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowersLikeTheWholeText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("letters and their neighbours") << u"@AZ[`az{09"_s;
        QTest::newRow("accents") << u"ÉTIENNE de Crécy"_s;
        QTest::newRow("dotted capital i, which grows") << u"İSTANBUL"_s;
        QTest::newRow("kelvin sign, which becomes ASCII") << u"\u212AELVIN"_s;
        QTest::newRow("beyond the basic plane") << u"\U00010400 X"_s;
        QTest::newRow("unpaired surrogate") << u"A"_s + QChar(0xD800) + u"B"_s;
        QTest::newRow("NUL inside") << u"A"_s + QChar(0) + u"B"_s;
    }

    void lowersLikeTheWholeText()
    {
        QFETCH(QString, text);
        std::u16string key = u"Kept ";
        appendLowerCased(key, text);
        QCOMPARE(QString::fromStdU16String(key), u"Kept "_s + lowerCased(text));
    }

    void everyCodeUnitLowersLikeTheWholeText()
    {
        for (char32_t unit = 0; unit < 0x10000; ++unit) {
            const QString text = QString(QChar(char16_t(unit))) + u"A"_s;
            std::u16string key;
            appendLowerCased(key, text);
            QCOMPARE(QStringView(key), QStringView(lowerCased(text)));
        }
    }

    void trimsOnlyWhatItAppended()
    {
        std::u16string key = u"a \n";
        appendLowerCasedTrimmed(key, u"\t\u00A0B c\u2028 ");
        QCOMPARE(QStringView(key), u"a \nb c");
        appendLowerCasedTrimmed(key, u" \n ");
        QCOMPARE(QStringView(key), u"a \nb c");
    }

    void trimsEveryKindOfWhiteSpace()
    {
        for (const QString &space : testing::RandomLibrary::spaces()) {
            std::u16string key;
            appendLowerCasedTrimmed(key, space + u"X"_s + space);
            const QString lowered = (space + u"x"_s + space).toLower();
            QCOMPARE(QStringView(key), trimmedWhiteSpace(lowered));
        }
    }
};

QTEST_APPLESS_MAIN(FoldedTextTest)
#include "folded_text_test.moc"
