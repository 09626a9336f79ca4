#include "support/qml_fixture.h"

#include <QColor>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

const QColor accent(236, 48, 19);
const QColor warn(176, 125, 16);
const QColor good(47, 125, 85);
const QColor empty(234, 231, 231);

QList<QQuickItem *> childrenOf(QQuickItem *item, const char *type)
{
    QList<QQuickItem *> found;
    for (QQuickItem *child : item->childItems()) {
        if (QByteArray(child->metaObject()->className()).startsWith(type))
            found += child;
    }
    return found;
}

QList<QColor> coloursOfTicks(int score)
{
    testing::QmlScene scene("Item { TickMeter { objectName: 'meter'; width: 400; score: " +
                            QByteArray::number(score) + " } }");
    QList<QColor> colours;
    for (QQuickItem *tick : childrenOf(scene.item(u"meter"_s), "QQuickRectangle"))
        colours += tick->property("color").value<QColor>();
    return colours;
}

} // namespace

/// The parts that only show something.
class PartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }
    void aScoreLightsItsTicks_data();
    void aScoreLightsItsTicks();
    void aTickIsColouredByItsPlace();
    void aBarIsAsLongAsItsShare_data();
    void aBarIsAsLongAsItsShare();
    void textIsNeverMarkup();
    void aMicroLabelReadsAsItWasGiven();
    void aPillIsFilledWhileActive();
    void aRiskBadgeSaysWhoDecides();
    void aTrackIsTwoLines();
    void aSectionMayHaveATrailingText();
    void aCardHoldsItsContentInsideItsPadding();
    void anIconIsDrawnAtTheScreensDensity();
};

void PartsTest::aScoreLightsItsTicks_data()
{
    QTest::addColumn<int>("score");
    QTest::addColumn<int>("lit");
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("2 rounds down") << 2 << 0;
    QTest::newRow("3 rounds up") << 3 << 1;
    QTest::newRow("52") << 52 << 10;
    QTest::newRow("60") << 60 << 12;
    QTest::newRow("79") << 79 << 16;
    QTest::newRow("97 rounds down") << 97 << 19;
    QTest::newRow("98 rounds up") << 98 << 20;
    QTest::newRow("all") << 100 << 20;
}

void PartsTest::aScoreLightsItsTicks()
{
    QFETCH(int, score);
    const QList<QColor> ticks = coloursOfTicks(score);
    QCOMPARE(ticks.size(), 20);
    QTEST(int(ticks.size() - ticks.count(empty)), "lit");
}

void PartsTest::aTickIsColouredByItsPlace()
{
    const QList<QColor> full = coloursOfTicks(100);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(full[i], i < 11 ? accent : i < 16 ? warn : good);
    QCOMPARE(coloursOfTicks(52).count(accent), 10);
    QCOMPARE(coloursOfTicks(60)[11], warn);
    QCOMPARE(coloursOfTicks(60)[12], empty);
    QCOMPARE(coloursOfTicks(79).count(good), 0);
}

void PartsTest::aBarIsAsLongAsItsShare_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<double>("fraction");
    QTest::newRow("half") << QByteArray("value: 5; max: 10") << 0.5;
    QTest::newRow("all") << QByteArray("value: 10; max: 10") << 1.0;
    QTest::newRow("none") << QByteArray("value: 0; max: 10") << 0.0;
    QTest::newRow("nothing to compare with") << QByteArray("value: 0; max: 0") << 0.0;
    QTest::newRow("something of nothing") << QByteArray("value: 3; max: 0") << 0.0;
}

void PartsTest::aBarIsAsLongAsItsShare()
{
    QFETCH(QByteArray, values);
    QFETCH(double, fraction);
    testing::QmlScene scene("Item { BarRow { objectName: 'row'; width: 200; label: 'House';" +
                            values + " } }");
    QQuickItem *row = scene.item(u"row"_s);
    QCOMPARE(row->property("fraction").toDouble(), fraction);
    const auto meters = childrenOf(row, "Meter");
    QCOMPARE(meters.size(), 1);
    QTRY_COMPARE(meters[0]->width(), 200.0);
    QCOMPARE(meters[0]->childItems()[0]->width(), 200.0 * fraction);
}

void PartsTest::textIsNeverMarkup()
{
    testing::QmlScene scene("Item { PlainText { objectName: 'text'; text: '<b>Loud</b>' } }");
    const int plainText = 0;
    QCOMPARE(scene.item(u"text"_s)->property("textFormat").toInt(), plainText);
    QCOMPARE(testing::textsOf(scene.root()), QStringList{u"<b>Loud</b>"_s});
}

void PartsTest::aMicroLabelReadsAsItWasGiven()
{
    testing::QmlScene scene("Item { MicroLabel { objectName: 'label'; text: 'On disk' } }");
    QCOMPARE(testing::textsOf(scene.root()), QStringList{u"On disk"_s});
    const QFont font = scene.item(u"label"_s)->property("font").value<QFont>();
    QCOMPARE(font.capitalization(), QFont::AllUppercase);
}

void PartsTest::aPillIsFilledWhileActive()
{
    testing::QmlScene scene("Item { property color tint: Theme.good;"
                            "Pill { objectName: 'on'; text: 'All'; active: true; tint: Theme.good }"
                            "Pill { objectName: 'off'; text: 'All'; tint: Theme.good } }");
    QCOMPARE(scene.item(u"on"_s)->property("color").value<QColor>(), good);
    QCOMPARE(scene.item(u"off"_s)->property("color").value<QColor>().alpha(), 0);
}

void PartsTest::aRiskBadgeSaysWhoDecides()
{
    testing::QmlScene scene("Column { RiskBadge { safe: true } RiskBadge { safe: false } }");
    QCOMPARE(testing::textsOf(scene.root()), QStringList({u"Safe"_s, u"Your call"_s}));
}

void PartsTest::aTrackIsTwoLines()
{
    testing::QmlScene scene("Item { TrackLine { width: 300; first: 'Ash — Dawn';"
                            "second: '320kbps · dawn.mp3' } }");
    QCOMPARE(testing::textsOf(scene.root()),
             QStringList({u"Ash — Dawn"_s, u"320kbps · dawn.mp3"_s}));
}

void PartsTest::aSectionMayHaveATrailingText()
{
    testing::QmlScene scene("Column { SectionHead { title: 'Genres'; trailing: '12 tagged' }"
                            "SectionHead { title: 'Plain' } }");
    QCOMPARE(testing::textsOf(scene.root()),
             QStringList({u"Genres"_s, u"12 tagged"_s, u"Plain"_s}));
}

void PartsTest::aCardHoldsItsContentInsideItsPadding()
{
    testing::QmlScene scene(
        "Item { Card { objectName: 'card'; width: 300; Rectangle {"
        "objectName: 'content'; implicitHeight: 40; Layout.fillWidth: true } } }");
    QQuickItem *card = scene.item(u"card"_s);
    QTRY_COMPARE(card->implicitHeight(), 76.0);
    QQuickItem *content = scene.item(u"content"_s);
    QCOMPARE(content->mapRectToItem(card, content->boundingRect()), QRectF(18, 18, 264, 40));
}

void PartsTest::anIconIsDrawnAtTheScreensDensity()
{
    testing::QmlScene scene("Item { Icon { objectName: 'icon'; symbol: 'tag'; size: 13 } }");
    QQuickItem *image = scene.item(u"icon"_s)->childItems().first();
    const qreal density = scene.window()->effectiveDevicePixelRatio();
    const qreal pixels = image->width() * density;
    QCOMPARE(pixels, std::round(pixels));
    QCOMPARE(image->property("status").toInt(), 1);
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::PartsTest)
#include "parts_test.moc"
