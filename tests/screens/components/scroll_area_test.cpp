#include "support/qml_fixture.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr auto tallScreen = R"(
ScreenScaffold {
    title: "Change log"
    subtitle: "All that was done."
    Rectangle { width: parent.width; height: 1000 }
})";

QQuickItem *areaOf(testing::QmlScene &scene)
{
    return scene.root()->childItems().first();
}

} // namespace

class ScrollAreaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }

    void aScreenOpensWithTitleAndSubtitle()
    {
        testing::QmlScene scene(tallScreen);
        QCOMPARE(testing::textsOf(scene.root()),
                 QStringList({u"Change log"_s, u"All that was done."_s}));
    }

    void keysScroll()
    {
        testing::QmlScene scene(tallScreen, {480, 300});
        QQuickItem *area = areaOf(scene);
        const qreal last = area->property("lastY").toReal();
        QVERIFY(last > 700);
        QTest::keyClick(scene.window(), Qt::Key_Tab);
        QVERIFY(area->hasActiveFocus());
        const auto yAfter = [&](Qt::Key key) {
            QTest::keyClick(scene.window(), key);
            return area->property("contentY").toReal();
        };
        QCOMPARE(yAfter(Qt::Key_PageDown), 252.0);
        QCOMPARE(yAfter(Qt::Key_Down), 300.0);
        QCOMPARE(yAfter(Qt::Key_Up), 252.0);
        QCOMPARE(yAfter(Qt::Key_End), last);
        QCOMPARE(yAfter(Qt::Key_PageDown), last);
        QCOMPARE(yAfter(Qt::Key_Home), 0.0);
        QCOMPARE(yAfter(Qt::Key_PageUp), 0.0);
    }

    void whatFitsTakesNoKeyboard()
    {
        testing::QmlScene scene("ScreenScaffold { title: 'Short' }", {480, 300});
        QVERIFY(testing::tabOrder(scene.window()).isEmpty());
    }

    void theWheelScrolls()
    {
        testing::QmlScene scene(tallScreen, {480, 300});
        QWheelEvent down({100, 100}, scene.window()->mapToGlobal(QPoint(100, 100)), {}, {0, -120},
                         {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(scene.window(), &down);
        QTRY_VERIFY(areaOf(scene)->property("contentY").toReal() > 10);
    }
};

} // namespace tarnwick

QTEST_MAIN(tarnwick::ScrollAreaTest)
#include "scroll_area_test.moc"
