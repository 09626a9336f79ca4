#include "serato/shared_texts.h"

#include "foundation/utf16.h"
#include "support/serato_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

QString shared(SharedTexts &texts, const QByteArray &payload)
{
    QString text;
    texts.setShared(text, payload);
    texts.settle();
    return text;
}

/// Texts of which every two neighbours are told apart by one unit, at every place in turn.
QStringList nearlyEqualTexts(int units)
{
    QStringList all;
    for (int i = 0; i < units; ++i) {
        QString text(units, u'a');
        text[i] = u'b';
        all << text;
    }
    return all;
}

} // namespace

class SharedTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalPayloadsShareTheirMemory_data();
    void equalPayloadsShareTheirMemory();
    void anOwnTextIsNotShared();
    void textsAreDecodedAsEverywhere_data();
    void textsAreDecodedAsEverywhere();
    void textsThatDifferInOneUnitStayApart_data();
    void textsThatDifferInOneUnitStayApart();
    void manyDifferentTextsStayApart_data();
    void manyDifferentTextsStayApart();
    void ofTwoSettingsOfOneTextTheLaterStands();
    void theTextsOutliveTheirPayloads();
};

void SharedTextsTest::equalPayloadsShareTheirMemory_data()
{
    QTest::addColumn<QString>("text");
    for (const int units : {1, 2, 3, 4, 5, 8, 23, 24, 25, 31, 200})
        QTest::addRow("%d units", units) << QString(units, u'x');
}

void SharedTextsTest::equalPayloadsShareTheirMemory()
{
    QFETCH(const QString, text);
    const QByteArray first = utf16(text);
    const QByteArray second = utf16(text);
    SharedTexts texts(1'000);
    const QString one = shared(texts, first);
    QCOMPARE(one, text);
    QVERIFY(shared(texts, second).constData() == one.constData());
}

void SharedTextsTest::anOwnTextIsNotShared()
{
    const QByteArray payload = utf16(u"Path");
    SharedTexts texts(1'000);
    const QString own = texts.own(payload);
    QCOMPARE(own, u"Path"_s);
    QVERIFY(texts.own(payload).constData() != own.constData());
}

void SharedTextsTest::textsAreDecodedAsEverywhere_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    const QByteArray longText = utf16(QString(30, u'x'));
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("one byte") << hex("41") << QString();
    QTest::newRow("odd last byte") << hex("0041 42") << u"A"_s;
    QTest::newRow("NUL alone") << hex("0000") << QString(QChar::Null);
    QTest::newRow("unpaired surrogate") << hex("d800") << u"\uFFFD"_s;
    QTest::newRow("the same far behind") << longText + hex("d800") << QString(30, u'x') + u'\uFFFD';
}

void SharedTextsTest::textsAreDecodedAsEverywhere()
{
    QFETCH(const QByteArray, payload);
    QFETCH(const QString, text);
    SharedTexts texts(1'000);
    QCOMPARE(shared(texts, payload), text);
    QCOMPARE(shared(texts, payload), text);
    QCOMPARE(texts.own(payload), text);
}

void SharedTextsTest::textsThatDifferInOneUnitStayApart_data()
{
    QTest::addColumn<int>("units");
    for (const int units : {1, 2, 3, 4, 5, 7, 24, 25, 26, 40})
        QTest::addRow("%d units", units) << units;
}

void SharedTextsTest::textsThatDifferInOneUnitStayApart()
{
    QFETCH(const int, units);
    SharedTexts texts(1); // so few places that most of them share one
    const QStringList all = nearlyEqualTexts(units) + nearlyEqualTexts(units + 1);
    for (int round = 0; round < 2; ++round) {
        for (const QString &text : all)
            QCOMPARE(shared(texts, utf16(text)), text);
    }
}

void SharedTextsTest::manyDifferentTextsStayApart_data()
{
    QTest::addColumn<quint64>("records");
    QTest::newRow("as many as expected") << quint64(100'000);
    QTest::newRow("more than expected") << quint64(0);
    QTest::newRow("a file that is larger than any") << ~quint64(0);
}

void SharedTextsTest::manyDifferentTextsStayApart()
{
    QFETCH(const quint64, records);
    constexpr int count = 100'000; // far more than it remembers
    QByteArrayList payloads;
    for (int i = 0; i < count; ++i)
        payloads.append(utf16(QString::number(i)));
    QStringList read(count);
    SharedTexts texts(records);
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < count; ++i)
            texts.setShared(read[i], payloads.at(i));
        texts.settle();
        for (int i = 0; i < count; ++i)
            QCOMPARE(read.at(i), QString::number(i));
    }
}

void SharedTextsTest::ofTwoSettingsOfOneTextTheLaterStands()
{
    const QByteArray first = utf16(u"first");
    const QByteArray second = utf16(u"second");
    SharedTexts texts(1'000);
    QString text;
    texts.setShared(text, first);
    texts.setShared(text, second);
    texts.settle();
    QCOMPARE(text, u"second"_s);
    texts.setShared(text, first);
    texts.setShared(text, {});
    texts.settle();
    QCOMPARE(text, QString());
}

void SharedTextsTest::theTextsOutliveTheirPayloads()
{
    QStringList read(3);
    {
        SharedTexts texts(1'000);
        for (QString &text : read) {
            QByteArray payload = utf16(u"House");
            texts.setShared(text, payload);
            texts.settle();
            payload.fill('\0');
        }
    }
    QCOMPARE(read, QStringList(3, u"House"_s));
}

QTEST_GUILESS_MAIN(SharedTextsTest)
#include "shared_texts_test.moc"
