#include "analysis/text_numbering.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class TextNumberingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsFromZeroInTheOrderMet()
    {
        TextNumbering texts;
        QCOMPARE(texts.numberOf(u"b"), 0);
        QCOMPARE(texts.numberOf(u"a"), 1);
        QCOMPARE(texts.numberOf(u"b"), 0);
        QCOMPARE(texts.count(), 2);
        QCOMPARE(texts.text(0), u"b");
        QCOMPARE(texts.text(1), u"a");
    }

    void findsWithoutNumbering()
    {
        TextNumbering texts;
        QCOMPARE(texts.find(u"a"), -1);
        QCOMPARE(texts.count(), 0);
        texts.numberOf(u"a");
        QCOMPARE(texts.find(u"a"), 0);
    }

    void tellsApartWhatMerelyLooksAlike()
    {
        TextNumbering texts;
        QCOMPARE(texts.numberOf(u""), 0);
        QCOMPARE(texts.numberOf(u"é"), 1);
        QCOMPARE(texts.numberOf(u"e\u0301"), 2);
        QCOMPARE(texts.numberOf(u"E\u0301"), 3);
        QCOMPARE(texts.numberOf(QStringView(u"a\0b", 3)), 4);
        QCOMPARE(texts.numberOf(QStringView(u"a\0c", 3)), 5);
        QCOMPARE(texts.numberOf(QString()), 0);
    }

    void growsFarBeyondWhatWasExpected()
    {
        TextNumbering texts(2);
        std::map<QString, int> expected;
        for (int i = 0; i < 20'000; ++i) {
            const QString text = QString::number((i * 7919) % 9'000);
            const int next = int(expected.size());
            QCOMPARE(texts.numberOf(text), expected.try_emplace(text, next).first->second);
        }
        for (const auto &[text, number] : expected) {
            QCOMPARE(texts.find(text), number);
            QCOMPARE(texts.text(number), text);
        }
    }
};

QTEST_APPLESS_MAIN(TextNumberingTest)
#include "text_numbering_test.moc"
