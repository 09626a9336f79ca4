#include "screens/components/fonts.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

class FontsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachWeightHasItsFace_data();
    void eachWeightHasItsFace();
    void archivoIsAskedForByFamilyAndFace();
    void withoutArchivoTheSystemFontServes();
    void brokenSizesAreKept();
    void trackingIsAddedBetweenLetters();
    void capitalsAreShownNotWritten();
};

void FontsTest::eachWeightHasItsFace_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<QString>("face");
    QTest::newRow("black") << int(QFont::Black) << u"Archivo-Black"_s;
    QTest::newRow("heavy") << int(QFont::ExtraBold) << u"Archivo-Black"_s;
    QTest::newRow("bold") << int(QFont::Bold) << u"Archivo-Bold"_s;
    QTest::newRow("semibold") << int(QFont::DemiBold) << u"Archivo-SemiBold"_s;
    QTest::newRow("medium") << int(QFont::Medium) << u"Archivo-Medium"_s;
    QTest::newRow("regular") << int(QFont::Normal) << u"Archivo-Regular"_s;
    QTest::newRow("light") << int(QFont::Light) << u"Archivo-Regular"_s;
    QTest::newRow("thin") << int(QFont::Thin) << u"Archivo-Regular"_s;
}

void FontsTest::eachWeightHasItsFace()
{
    QFETCH(int, weight);
    QTEST(Fonts::archivoName(weight), "face");
}

void FontsTest::archivoIsAskedForByFamilyAndFace()
{
    const QFont heavy = Fonts::fontOf(true, 24, QFont::ExtraBold, 0);
    QCOMPARE(heavy.family(), u"Archivo"_s);
    QCOMPARE(heavy.styleName(), u"Black"_s);
    QCOMPARE(heavy.weight(), int(QFont::Black));
    const QFont light = Fonts::fontOf(true, 13, QFont::Light, 0);
    QCOMPARE(light.styleName(), u"Regular"_s);
    QCOMPARE(light.weight(), int(QFont::Normal));
}

void FontsTest::withoutArchivoTheSystemFontServes()
{
    const QFont font = Fonts::fontOf(false, 13, QFont::DemiBold, 0);
    QCOMPARE(font.family(), QFont().family());
    QCOMPARE(font.weight(), int(QFont::DemiBold));
    QVERIFY(QFontMetricsF(font).horizontalAdvance(u"Tarnwick"_s) > 0);
}

void FontsTest::brokenSizesAreKept()
{
    const auto points = [](qreal size) {
        return Fonts::fontOf(false, size, QFont::Normal, 0).pointSizeF();
    };
    QCOMPARE(points(13.5) / points(13), 13.5 / 13);
    QCOMPARE(points(11.5) / points(23), 0.5);
    QCOMPARE(QFontInfo(Fonts::fontOf(false, 24, QFont::Normal, 0)).pixelSize(), 24);
}

void FontsTest::trackingIsAddedBetweenLetters()
{
    const QFont font = Fonts::font(10, QFont::DemiBold, 0.5);
    QCOMPARE(font.letterSpacingType(), QFont::AbsoluteSpacing);
    QCOMPARE(font.letterSpacing(), 0.5);
}

void FontsTest::capitalsAreShownNotWritten()
{
    QCOMPARE(Fonts::capitals(10, QFont::DemiBold, 0.5).capitalization(), QFont::AllUppercase);
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::FontsTest)
#include "fonts_test.moc"
