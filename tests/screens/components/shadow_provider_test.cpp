#include "screens/components/shadow_provider.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// A shape that any shadow of these tests can be stretched to.
const QSizeF large(1000, 1000);

QImage draw(const QColor &color, qreal blur, qreal corner, const QSizeF &shape = large)
{
    ShadowProvider provider;
    QSize size;
    const QUrl url = Shadows::url(color, blur, corner, shape.width(), shape.height());
    const QImage image = provider.requestImage(url.path().mid(1), &size, {});
    return image.size() == size ? image : QImage();
}

} // namespace

class ShadowProviderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ofALargeShapeThePictureIsTwoEdgesAndOnePixel_data();
    void ofALargeShapeThePictureIsTwoEdgesAndOnePixel();
    void ofASmallShapeThePictureIsAsLargeAsTheShadow();
    void allLargeShapesShareOnePicture();
    void theMiddleHasTheWholeColourAndTheRimNone();
    void theEdgeOfTheShapeHasHalf();
    void itFadesOutwards();
};

void ShadowProviderTest::ofALargeShapeThePictureIsTwoEdgesAndOnePixel_data()
{
    QTest::addColumn<double>("blur");
    QTest::addColumn<double>("corner");
    QTest::newRow("button") << 1.0 << 9.0;
    QTest::newRow("toast") << 12.0 << 12.0;
    QTest::newRow("window") << 35.0 << 16.0;
}

void ShadowProviderTest::ofALargeShapeThePictureIsTwoEdgesAndOnePixel()
{
    QFETCH(double, blur);
    QFETCH(double, corner);
    const int side = 2 * Shadows::edge(blur, corner, large.width()) + 1;
    QCOMPARE(draw(Qt::black, blur, corner).size(), QSize(side, side));
}

void ShadowProviderTest::ofASmallShapeThePictureIsAsLargeAsTheShadow()
{
    const QImage image = draw(Qt::black, 12, 12, {1000, 38});
    QCOMPARE(image.height(), 38 + 2 * Shadows::reach(12));
    QVERIFY(2 * Shadows::edge(12, 12, 38) < image.height());
    QVERIFY(image.pixelColor(image.width() / 2, image.height() - 1).alpha() <= 3);
}

void ShadowProviderTest::allLargeShapesShareOnePicture()
{
    QCOMPARE(Shadows::url(Qt::black, 12, 12, 300, 400), Shadows::url(Qt::black, 12, 12, 900, 700));
    QVERIFY(Shadows::url(Qt::black, 12, 12, 300, 38) != Shadows::url(Qt::black, 12, 12, 300, 60));
}

void ShadowProviderTest::theMiddleHasTheWholeColourAndTheRimNone()
{
    const QImage image = draw(QColor(0, 0, 0, 61), 35, 16);
    const int middle = image.width() / 2;
    QVERIFY(std::abs(image.pixelColor(middle, middle).alpha() - 61) <= 1);
    QVERIFY(image.pixelColor(0, 0).alpha() == 0);
    QVERIFY(image.pixelColor(middle, 0).alpha() <= 1);
}

void ShadowProviderTest::theEdgeOfTheShapeHasHalf()
{
    const QImage image = draw(Qt::black, 10, 0);
    const int alpha = image.pixelColor(image.width() / 2, Shadows::reach(10)).alpha();
    QVERIFY2(std::abs(alpha - 128) < 12, qPrintable(QString::number(alpha)));
}

void ShadowProviderTest::itFadesOutwards()
{
    const QImage image = draw(Qt::black, 12, 9);
    const int middle = image.width() / 2;
    for (int y = 1; y <= middle; ++y)
        QVERIFY(image.pixelColor(middle, y).alpha() >= image.pixelColor(middle, y - 1).alpha());
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::ShadowProviderTest)
#include "shadow_provider_test.moc"
