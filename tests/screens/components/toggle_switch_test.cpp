#include "support/qml_fixture.h"

using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class ToggleSwitchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnAnyWarning(); }

    void isPressedInEveryWayAndShowsWhatItsOwnerSays()
    {
        QmlScene scene("Item { id: root; property bool on: false; property bool owned: true;"
                       "Column { PlainButton { text: 'other'; width: 40; height: 20 }"
                       "ToggleSwitch { objectName: 'toggle'; text: 'Apply'; on: root.on;"
                       "onClicked: if (root.owned) root.on = !root.on } } }");
        QQuickItem *toggle = scene.item(u"toggle"_s);
        auto *seen = QAccessible::queryAccessibleInterface(toggle);
        QCOMPARE(accessibleRole(toggle), QAccessible::CheckBox);
        QCOMPARE(accessibleName(toggle), u"Apply"_s);
        QVERIFY(seen->state().checkable);
        QVERIFY(!seen->state().checked);

        QVERIFY(pressByPointer(toggle));
        QVERIFY(scene.value("on").toBool());
        QVERIFY(seen->state().checked);
        QVERIFY(pressByKey(toggle, Qt::Key_Space));
        QVERIFY(!scene.value("on").toBool());
        QVERIFY(!seen->state().checked);
        QVERIFY(pressByKey(toggle, Qt::Key_Return));
        QVERIFY(scene.value("on").toBool());
        QVERIFY(pressByScreenReader(toggle));
        QVERIFY(!scene.value("on").toBool());
        seen->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(scene.value("on").toBool());

        scene.root()->setProperty("owned", false);
        QVERIFY(pressByPointer(toggle));
        QVERIFY(seen->state().checked);
        QVERIFY(toggle->property("on").toBool());
    }
};

QTEST_MAIN(ToggleSwitchTest)
#include "toggle_switch_test.moc"
