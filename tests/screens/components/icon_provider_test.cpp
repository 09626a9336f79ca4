#include "screens/components/icon_provider.h"

#include "foundation/screen.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The symbols that views name by themselves, beside those of the screens.
const QStringList otherSymbols = {
    u"arrow.clockwise"_s,       u"arrow.right"_s,        u"checkmark.circle.fill"_s,
    u"checkmark.shield.fill"_s, u"cross.case.fill"_s,    u"exclamationmark.triangle.fill"_s,
    u"internaldrive"_s,         u"internaldrive.fill"_s, u"magnifyingglass"_s,
    u"person.fill"_s,
};

QImage draw(const QString &symbol, int side, const QColor &color, Icons::Lines lines = Icons::Plain)
{
    IconProvider provider;
    QSize size;
    const QString address = Icons::url(symbol, color, lines).path().mid(1);
    return provider.requestImage(address, &size, {side, side});
}

int coverage(const QImage &image)
{
    int sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y));
    }
    return sum / 255;
}

} // namespace

class IconProviderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySymbolNamedHasADrawing_data();
    void everySymbolNamedHasADrawing();
    void theDrawingTakesTheColourAskedFor();
    void thePictureHasTheSizeAskedFor_data();
    void thePictureHasTheSizeAskedFor();
    void aPreparedPictureIsNoOther_data();
    void aPreparedPictureIsNoOther();
    void heavyLinesCoverMore();
    void anUnknownSymbolHasNoPicture();
    void noSymbolHasNoAddress();
};

void IconProviderTest::everySymbolNamedHasADrawing_data()
{
    QTest::addColumn<QString>("symbol");
    for (const ScreenInfo &info : allScreens())
        QTest::addRow("%s", qPrintable(info.symbol)) << info.symbol;
    for (const QString &symbol : otherSymbols)
        QTest::addRow("%s", qPrintable(symbol)) << symbol;
}

void IconProviderTest::everySymbolNamedHasADrawing()
{
    QFETCH(QString, symbol);
    QVERIFY(QFile::exists(Icons::drawing(symbol)));
    for (const int side : {12, 16, 24, 48}) {
        const int covered = coverage(draw(symbol, side, Qt::black));
        QVERIFY2(covered > side * side / 20, qPrintable(QString::number(covered)));
        QVERIFY2(covered < side * side * 9 / 10, qPrintable(QString::number(covered)));
    }
}

void IconProviderTest::theDrawingTakesTheColourAskedFor()
{
    const QImage image = draw(u"bolt.fill"_s, 48, QColor(236, 48, 19));
    QCOMPARE(image.pixelColor(24, 24), QColor(236, 48, 19));
    const QImage faint = draw(u"bolt.fill"_s, 48, QColor(0, 0, 0, 128));
    QCOMPARE(faint.pixelColor(24, 24).alpha(), 128);
}

void IconProviderTest::thePictureHasTheSizeAskedFor_data()
{
    QTest::addColumn<int>("side");
    QTest::newRow("16 at 1x") << 16;
    QTest::newRow("16 at 1.25x") << 20;
    QTest::newRow("16 at 2x") << 32;
}

void IconProviderTest::thePictureHasTheSizeAskedFor()
{
    QFETCH(int, side);
    QCOMPARE(draw(u"tag"_s, side, Qt::black).size(), QSize(side, side));
}

void IconProviderTest::aPreparedPictureIsNoOther_data()
{
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<int>("side");
    QTest::addColumn<Icons::Lines>("lines");
    QTest::newRow("as prepared") << u"bolt.fill"_s << 16 << Icons::Plain;
    QTest::newRow("of another size") << u"bolt.fill"_s << 32 << Icons::Plain;
    QTest::newRow("in heavy lines") << u"arrow.right"_s << 16 << Icons::Heavy;
    QTest::newRow("not prepared") << u"tag"_s << 16 << Icons::Plain;
    QTest::newRow("unknown") << u"no.such.symbol"_s << 16 << Icons::Plain;
}

void IconProviderTest::aPreparedPictureIsNoOther()
{
    QFETCH(const QString, symbol);
    QFETCH(const int, side);
    QFETCH(const Icons::Lines, lines);
    const QStringList symbols = {u"bolt.fill"_s, u"arrow.right"_s, u"no.such.symbol"_s};
    auto prepared = std::async(std::launch::async, &IconProvider::drawings, symbols, 16);
    IconProvider provider(prepared.share());
    for (const QColor &color : {QColor(236, 48, 19), QColor(0, 0, 0, 128)}) {
        const QString address = Icons::url(symbol, color, lines).path().mid(1);
        QSize size;
        const QImage picture = provider.requestImage(address, &size, {side, side});
        QCOMPARE(picture, draw(symbol, side, color, lines));
    }
}

void IconProviderTest::heavyLinesCoverMore()
{
    const int plain = coverage(draw(u"arrow.right"_s, 48, Qt::black));
    const int heavy = coverage(draw(u"arrow.right"_s, 48, Qt::black, Icons::Heavy));
    QVERIFY(heavy > plain * 5 / 4);
}

void IconProviderTest::anUnknownSymbolHasNoPicture()
{
    QVERIFY(draw(u"no.such.symbol"_s, 16, Qt::black).isNull());
    IconProvider provider;
    QSize size;
    QVERIFY(provider.requestImage(u"tag"_s, &size, {16, 16}).isNull());
}

void IconProviderTest::noSymbolHasNoAddress()
{
    QVERIFY(Icons::url({}, Qt::black, Icons::Plain).isEmpty());
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::IconProviderTest)
#include "icon_provider_test.moc"
