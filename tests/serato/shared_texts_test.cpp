#include "serato/shared_texts.h"

#include "support/serato_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

class SharedTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalPayloadsShareTheirMemory();
    void textsAreDecodedAsEverywhere_data();
    void textsAreDecodedAsEverywhere();
    void manyDifferentTextsStayApart();
};

void SharedTextsTest::equalPayloadsShareTheirMemory()
{
    const QByteArray first = utf16(u"House");
    const QByteArray second = utf16(u"House");
    SharedTexts texts;
    const QString text = texts.text(first);
    QCOMPARE(text, u"House"_s);
    QCOMPARE(texts.text(second).constData(), text.constData());
}

void SharedTextsTest::textsAreDecodedAsEverywhere_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("one byte") << hex("41") << QString();
    QTest::newRow("odd last byte") << hex("0041 42") << u"A"_s;
    QTest::newRow("NUL alone") << hex("0000") << QString(QChar::Null);
    QTest::newRow("unpaired surrogate") << hex("d800") << u"\uFFFD"_s;
}

void SharedTextsTest::textsAreDecodedAsEverywhere()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const QString, text);
    SharedTexts texts;
    QCOMPARE(texts.text(payload), text);
    QCOMPARE(texts.text(payload), text);
}

void SharedTextsTest::manyDifferentTextsStayApart()
{
    constexpr int count = 100'000; // far more than it remembers
    QByteArrayList payloads;
    for (int i = 0; i < count; ++i)
        payloads.append(utf16(QString::number(i)));
    SharedTexts texts;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < count; ++i)
            QCOMPARE(texts.text(payloads.at(i)), QString::number(i));
    }
}

QTEST_GUILESS_MAIN(SharedTextsTest)
#include "shared_texts_test.moc"
