#include "support/qml_fixture.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr auto tallArea = R"(
ScrollArea {
    id: area
    property Item last: last
    spacing: 0
    PlainButton { objectName: "first"; width: 100; height: 40 }
    Item { width: 10; height: 1000 }
    PlainButton { id: last; objectName: "last"; width: 100; height: 40 }
})";

} // namespace

class FocusKeeperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }

    void whatHasTheKeyboardIsScrolledIntoView()
    {
        testing::QmlScene scene(tallArea, {300, 200});
        QCOMPARE(scene.value("contentY").toReal(), 0.0);
        scene.item(u"last"_s)->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(scene.value("contentY").toReal(), 1080.0 - 200);
        scene.item(u"first"_s)->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(scene.value("contentY").toReal(), 0.0);
    }

    void whatIsInViewStaysWhereItIs()
    {
        testing::QmlScene scene(tallArea, {300, 200});
        scene.root()->setProperty("contentY", 20);
        scene.item(u"last"_s)->setY(150);
        scene.item(u"last"_s)->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(scene.value("contentY").toReal(), 20.0);
    }

    void aFocusOutsideMovesNothing()
    {
        testing::QmlScene scene(QByteArray("Item { PlainButton { objectName: 'outside'; y: 900 }") +
                                    "Item { width: 300; height: 200; " + tallArea + "} }",
                                {300, 200});
        scene.item(u"outside"_s)->forceActiveFocus(Qt::TabFocusReason);
        auto *area = scene.root()->childItems().last()->childItems().first();
        QCOMPARE(area->property("contentY").toReal(), 0.0);
    }
};

} // namespace tarnwick

QTEST_MAIN(tarnwick::FocusKeeperTest)
#include "focus_keeper_test.moc"
