#include "screens/components/shadow_provider.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QImage draw(const QColor &color, qreal blur, qreal corner)
{
    ShadowProvider provider;
    QSize size;
    return provider.requestImage(Shadows::url(color, blur, corner).path().mid(1), &size, {});
}

} // namespace

class ShadowProviderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePictureIsTwoEdgesAndOnePixel_data();
    void thePictureIsTwoEdgesAndOnePixel();
    void theMiddleHasTheWholeColourAndTheRimNone();
    void theEdgeOfTheShapeHasHalf();
    void itFadesOutwards();
};

void ShadowProviderTest::thePictureIsTwoEdgesAndOnePixel_data()
{
    QTest::addColumn<double>("blur");
    QTest::addColumn<double>("corner");
    QTest::newRow("button") << 1.0 << 9.0;
    QTest::newRow("toast") << 12.0 << 12.0;
    QTest::newRow("window") << 35.0 << 16.0;
}

void ShadowProviderTest::thePictureIsTwoEdgesAndOnePixel()
{
    QFETCH(double, blur);
    QFETCH(double, corner);
    const int side = 2 * Shadows::edge(blur, corner) + 1;
    QCOMPARE(draw(Qt::black, blur, corner).size(), QSize(side, side));
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
