#include "screens/components/tabular_text.h"

#include "support/qml_fixture.h"

#include <QFontDatabase>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// A font whose 1 is narrower than its 8, where this machine has one.
QFont proportional()
{
    QFont font(u"Inter"_s);
    font.setPixelSize(40);
    return font;
}

qreal widthOf(const QString &text)
{
    TabularText item;
    item.setFont(proportional());
    item.setText(text);
    return item.implicitWidth();
}

} // namespace

class TabularTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }

    void everyDigitTakesTheSameRoom()
    {
        QCOMPARE(widthOf(u"1111"_s), widthOf(u"8888"_s));
        QCOMPARE(widthOf(u"11 of 17 tracks"_s), widthOf(u"80 of 46 tracks"_s));
    }

    void otherCharactersTakeTheirOwn()
    {
        QVERIFY(widthOf(u"iiii"_s) < widthOf(u"mmmm"_s));
        QCOMPARE(widthOf({}), 0.0);
    }

    void drawsInItsColour()
    {
        testing::QmlScene scene("Rectangle { color: 'white'; Figure { objectName: 'figure';"
                                "text: '888'; font: Theme.display(40); color: Theme.accent } }");
        QVERIFY(scene.item(u"figure"_s)->width() > 40);
        const QImage picture = scene.picture();
        int coloured = 0;
        for (int x = 0; x < picture.width(); ++x)
            coloured += picture.pixelColor(x, 24).green() < 128;
        QVERIFY(coloured > 5);
    }

    void isReadOutAsText()
    {
        testing::QmlScene scene("Item { Figure { text: '12 of 40 tracks' } }");
        QCOMPARE(testing::textsOf(scene.root()), QStringList{u"12 of 40 tracks"_s});
    }

    void followsItsText()
    {
        testing::QmlScene scene("Item { property string words: '1';"
                                "Figure { objectName: 'figure'; text: parent.words } }");
        const qreal before = scene.item(u"figure"_s)->width();
        scene.root()->setProperty("words", u"1000"_s);
        QVERIFY(scene.item(u"figure"_s)->width() > 3 * before);
    }
};

QTEST_MAIN(TabularTextTest)
#include "tabular_text_test.moc"
