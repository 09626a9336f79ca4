#include "support/qml_fixture.h"

#include <QColor>
#include <QFont>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr auto holder = "Item { property QtObject theme: Theme }";

QObject *theme(testing::QmlScene &scene)
{
    return scene.value("theme").value<QObject *>();
}

} // namespace

class ThemeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }
    void eachTokenHasItsColour_data();
    void eachTokenHasItsColour();
    void inkIsThinnedByOpacity_data();
    void inkIsThinnedByOpacity();
    void cornersHaveTheirRadius();
    void shadowsHaveColourRadiusAndOffset_data();
    void shadowsHaveColourRadiusAndOffset();
    void fontsComeBySizeWeightAndTracking();
    void tintsNameTokens();
};

void ThemeTest::eachTokenHasItsColour_data()
{
    QTest::addColumn<QColor>("colour");
    const auto row = [](const char *token, int red, int green, int blue) {
        QTest::newRow(token) << QColor(red, green, blue);
    };
    row("desk", 231, 230, 230);
    row("ground", 243, 242, 242);
    row("sidebar", 238, 237, 236);
    row("surface", 234, 233, 233);
    row("card", 255, 255, 255);
    row("neutral100", 248, 244, 244);
    row("neutral200", 234, 231, 231);
    row("neutral300", 215, 211, 211);
    row("neutral400", 186, 182, 182);
    row("neutral500", 155, 151, 151);
    row("neutral600", 125, 121, 121);
    row("neutral700", 96, 93, 93);
    row("neutral800", 68, 65, 65);
    row("neutral900", 45, 43, 43);
    row("ink", 32, 30, 29);
    row("accent", 236, 48, 19);
    row("accent2", 225, 91, 71);
    row("accent600", 221, 43, 15);
    row("accent700", 174, 24, 0);
    row("accent800", 124, 20, 5);
    row("accent100", 255, 242, 239);
    row("accent200", 255, 224, 217);
    row("good", 47, 125, 85);
    row("warn", 176, 125, 16);
}

void ThemeTest::eachTokenHasItsColour()
{
    QFETCH(QColor, colour);
    testing::QmlScene scene(holder);
    QCOMPARE(theme(scene)->property(QTest::currentDataTag()).value<QColor>(), colour);
}

void ThemeTest::inkIsThinnedByOpacity_data()
{
    QTest::addColumn<double>("opacity");
    QTest::newRow("inkSoft") << 0.62;
    QTest::newRow("inkFaint") << 0.42;
    QTest::newRow("rowRule") << 0.055;
    QTest::newRow("sectionRule") << 0.09;
    QTest::newRow("controlRule") << 0.18;
}

void ThemeTest::inkIsThinnedByOpacity()
{
    QFETCH(double, opacity);
    testing::QmlScene scene(holder);
    const auto colour = theme(scene)->property(QTest::currentDataTag()).value<QColor>();
    QCOMPARE(colour.rgb(), QColor(32, 30, 29).rgb());
    QVERIFY(std::abs(colour.alphaF() - opacity) < 0.003);
}

void ThemeTest::cornersHaveTheirRadius()
{
    testing::QmlScene scene("Item { property var radii: [Theme.radius.window, Theme.radius.card,"
                            "Theme.radius.control, Theme.radius.pill] }");
    const QVariantList radii = scene.value("radii").toList();
    QCOMPARE(radii, QVariantList({16, 15, 9, 999}));
}

void ThemeTest::shadowsHaveColourRadiusAndOffset_data()
{
    QTest::addColumn<double>("opacity");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("y");
    QTest::newRow("windowShadow1") << 0.06 << 1.0 << 1.0;
    QTest::newRow("windowShadow2") << 0.24 << 35.0 << 28.0;
    QTest::newRow("buttonShadow") << 0.08 << 1.0 << 1.0;
}

void ThemeTest::shadowsHaveColourRadiusAndOffset()
{
    QFETCH(double, opacity);
    testing::QmlScene scene(holder);
    auto *shadow = theme(scene)->property(QTest::currentDataTag()).value<QObject *>();
    QVERIFY(shadow);
    const auto colour = shadow->property("color").value<QColor>();
    QCOMPARE(colour.rgb(), QColor(32, 30, 29).rgb());
    QVERIFY(std::abs(colour.alphaF() - opacity) < 0.003);
    QTEST(shadow->property("radius").toDouble(), "radius");
    QTEST(shadow->property("y").toDouble(), "y");
}

void ThemeTest::fontsComeBySizeWeightAndTracking()
{
    testing::QmlScene scene("Item { property font plain: Theme.font(13);"
                            "property font spaced: Theme.font(10, Font.DemiBold, 0.5);"
                            "property font big: Theme.display(64);"
                            "property string face: Theme.archivoName(Font.ExtraBold) }");
    QCOMPARE(scene.value("plain").value<QFont>().weight(), int(QFont::Normal));
    QCOMPARE(scene.value("plain").value<QFont>().letterSpacing(), 0.0);
    QCOMPARE(scene.value("spaced").value<QFont>().weight(), int(QFont::DemiBold));
    QCOMPARE(scene.value("spaced").value<QFont>().letterSpacing(), 0.5);
    QVERIFY(scene.value("big").value<QFont>().weight() >= int(QFont::ExtraBold));
    QCOMPARE(scene.value("face").toString(), u"Archivo-Black"_s);
}

void ThemeTest::tintsNameTokens()
{
    testing::QmlScene scene("Item { property bool same: Theme.tint(Tint.Ink) === Theme.ink"
                            " && Theme.tint(Tint.InkSoft) === Theme.inkSoft"
                            " && Theme.tint(Tint.InkFaint) === Theme.inkFaint"
                            " && Theme.tint(Tint.Neutral) === Theme.neutral500"
                            " && Theme.tint(Tint.Good) === Theme.good"
                            " && Theme.tint(Tint.Warn) === Theme.warn"
                            " && Theme.tint(Tint.Accent) === Theme.accent"
                            " && Theme.tint(Tint.SoftAccent) === Theme.accent2 }");
    QVERIFY(scene.value("same").toBool());
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::ThemeTest)
#include "theme_test.moc"
