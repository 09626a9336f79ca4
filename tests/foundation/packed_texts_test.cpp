#include "foundation/packed_texts.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

QString packed(PackedTexts &texts, QStringView text)
{
    return texts.text(text.size(), [text](char16_t *out) {
        std::copy(text.utf16(), text.utf16() + text.size(), out);
    });
}

QString numbered(int number)
{
    return u"text %1"_s.arg(number);
}

QStringList packedNumbers(int count)
{
    PackedTexts texts;
    QStringList all;
    for (int i = 0; i < count; ++i)
        all.append(packed(texts, numbered(i)));
    return all;
}

} // namespace

class PackedTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextHoldsWhatItWasFilledWith_data();
    void aTextHoldsWhatItWasFilledWith();
    void shortTextsLieSideBySide();
    void textsOutliveWhatMadeThem();
    void aTextOutlivesTheOthersOfItsBlock();
    void aChangeToOneTextLeavesTheOthersAlone();
    void theLastTextOfABlockCanBeChanged();
    void aStockGivesOutOneTextForEver_data();
    void aStockGivesOutOneTextForEver();
    void aStockFilledAnewLetsTheOldTextGo();
    void whatAStockCountedAheadIsGivenBack();
};

void PackedTextsTest::aTextHoldsWhatItWasFilledWith_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("one unit") << u"x"_s;
    QTest::newRow("NUL alone") << QString(QChar::Null);
    for (const int units : {121, 122, 123, 243, 244, 245, 10'000})
        QTest::addRow("%d units", units) << QString(units, u'é');
}

void PackedTextsTest::aTextHoldsWhatItWasFilledWith()
{
    QFETCH(const QString, text);
    PackedTexts texts;
    for (int round = 0; round < 20; ++round) {
        const QString made = packed(texts, text);
        QCOMPARE(made, text);
        QCOMPARE(made.isNull(), text.isEmpty());
        QCOMPARE(made.constData()[made.size()], QChar::Null); // what takes a C text relies on it
    }
}

void PackedTextsTest::shortTextsLieSideBySide()
{
    PackedTexts texts;
    const QString first = packed(texts, u"House");
    const QString second = packed(texts, u"Techno");
    QCOMPARE(second.constData() - first.constData(), first.size() + 1);
}

void PackedTextsTest::textsOutliveWhatMadeThem()
{
    constexpr int count = 5'000;
    const QStringList all = packedNumbers(count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(all.at(i), numbered(i));
}

void PackedTextsTest::aTextOutlivesTheOthersOfItsBlock()
{
    QStringList all = packedNumbers(1'000);
    const QString kept = all.at(500);
    all.clear();
    QCOMPARE(kept, numbered(500));
}

void PackedTextsTest::aChangeToOneTextLeavesTheOthersAlone()
{
    constexpr int count = 100;
    QStringList all = packedNumbers(count);
    for (int i = 0; i < count; i += 2) {
        all[i] += u" and more, so that it would run into the text behind it";
        all[i][0] = u'T';
        all[i].prepend(u"a ");
    }
    for (int i = 1; i < count; i += 2)
        QCOMPARE(all.at(i), numbered(i));
    QCOMPARE(all.at(42), u"a Text 42 and more, so that it would run into the text behind it"_s);
}

void PackedTextsTest::theLastTextOfABlockCanBeChanged()
{
    QString last = packedNumbers(8).takeLast();
    last += QString(500, u'!');
    QCOMPARE(last, numbered(7) + QString(500, u'!'));
    last.truncate(4);
    last.squeeze();
    QCOMPARE(last, u"text"_s);
}

void PackedTextsTest::aStockGivesOutOneTextForEver_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("packed with others") << u"House"_s;
    QTest::newRow("too long to be packed") << QString(1'000, u'x');
}

void PackedTextsTest::aStockGivesOutOneTextForEver()
{
    QFETCH(const QString, text);
    constexpr int count = 200'000; // more than it counts ahead at a time
    QStringList taken;
    {
        PackedTexts texts;
        TextStock stock;
        stock.fill(packed(texts, text));
        QCOMPARE(stock.view(), text);
        QCOMPARE(stock.size(), text.size());
        for (int i = 0; i < count; ++i)
            taken.append(stock.take());
    }
    const QString last = taken.last();
    QVERIFY(std::all_of(taken.cbegin(), taken.cend(), [&last](const QString &one) {
        return one.constData() == last.constData();
    }));
    taken.clear();
    QCOMPARE(last, text);
}

void PackedTextsTest::aStockFilledAnewLetsTheOldTextGo()
{
    PackedTexts texts;
    TextStock stock;
    stock.fill(packed(texts, u"House"));
    const QString house = stock.take();
    stock.fill(packed(texts, u"Techno"));
    QCOMPARE(stock.take(), u"Techno"_s);
    stock.fill({});
    QVERIFY(stock.take().isNull());
    QCOMPARE(house, u"House"_s);
}

void PackedTextsTest::whatAStockCountedAheadIsGivenBack()
{
    QString text;
    {
        PackedTexts texts;
        TextStock stock;
        stock.fill(packed(texts, u"House"));
        text = stock.take();
    }
    QVERIFY(text.isDetached()); // the only holder of its block
}

QTEST_GUILESS_MAIN(PackedTextsTest)
#include "packed_texts_test.moc"
