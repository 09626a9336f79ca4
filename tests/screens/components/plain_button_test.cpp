#include "support/qml_fixture.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Two buttons of one kind above each other; the root counts the presses of the second.
QByteArray twoButtons(const QByteArray &type, const QByteArray &properties)
{
    const QByteArray head = type + " { " + properties;
    return "Item { id: root; property int presses: 0; Column {" + head + " objectName: 'other' }" +
           head + " objectName: 'button'; onClicked: ++root.presses } } }";
}

} // namespace

class PlainButtonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }
    void everyWayPressesOnce_data();
    void everyWayPressesOnce();
    void whenNotEnabledNoWayPresses_data() { everyWayPressesOnce_data(); }
    void whenNotEnabledNoWayPresses();
    void aHeldEnterPressesOnce();
    void theRingShowsForTheKeyboardAlone();
    void anAmpersandIsNoShortcut();
    void tabGoesInReadingOrder();
    void thePointerBecomesAHand();
    void whenNotEnabledThePointerLightsNothing_data() { everyWayPressesOnce_data(); }
    void whenNotEnabledThePointerLightsNothing();
};

void PlainButtonTest::everyWayPressesOnce_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("properties");
    QTest::newRow("plain") << QByteArray("PlainButton")
                           << QByteArray("text: 'Go'; width: 80; height: 30;");
    QTest::newRow("primary") << QByteArray("PrimaryButton") << QByteArray("title: 'Go';");
    QTest::newRow("primary with icon")
        << QByteArray("PrimaryButton") << QByteArray("title: 'Go'; symbol: 'magnifyingglass';");
    QTest::newRow("ghost") << QByteArray("GhostButton")
                           << QByteArray("title: 'Go'; symbol: 'arrow.right';");
}

void PlainButtonTest::everyWayPressesOnce()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, properties);
    testing::QmlScene scene(twoButtons(type, properties));
    QQuickItem *button = scene.item(u"button"_s);
    QCOMPARE(testing::accessibleRole(button), QAccessible::Button);
    QCOMPARE(testing::accessibleName(button), u"Go"_s);

    QVERIFY(testing::pressByPointer(button));
    QCOMPARE(scene.value("presses").toInt(), 1);
    QVERIFY(testing::pressByKey(button, Qt::Key_Space));
    QCOMPARE(scene.value("presses").toInt(), 2);
    QVERIFY(testing::pressByKey(button, Qt::Key_Return));
    QCOMPARE(scene.value("presses").toInt(), 3);
    QVERIFY(testing::pressByKey(button, Qt::Key_Enter));
    QCOMPARE(scene.value("presses").toInt(), 4);
    QVERIFY(testing::pressByScreenReader(button));
    QCOMPARE(scene.value("presses").toInt(), 5);
}

void PlainButtonTest::anAmpersandIsNoShortcut()
{
    testing::QmlScene scene(twoButtons("TextButton", "text: 'Drum & Bass';"));
    QTest::keyClick(scene.window(), Qt::Key_Space, Qt::AltModifier);
    QCOMPARE(scene.value("presses").toInt(), 0);
    testing::QmlScene letter("Item { id: root; property int presses: 0;"
                             "TextButton { text: 'R&B'; onClicked: ++root.presses } }");
    QTest::keyClick(letter.window(), Qt::Key_B, Qt::AltModifier);
    QCOMPARE(letter.value("presses").toInt(), 0);
}

void PlainButtonTest::whenNotEnabledNoWayPresses()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, properties);
    testing::QmlScene scene(twoButtons(type, properties + "enabled: false;"));
    QQuickItem *button = scene.item(u"button"_s);
    testing::pressByPointer(button);
    QVERIFY(!testing::pressByKey(button, Qt::Key_Space));
    testing::pressByScreenReader(button);
    QCOMPARE(scene.value("presses").toInt(), 0);
}

void PlainButtonTest::aHeldEnterPressesOnce()
{
    testing::QmlScene scene(twoButtons("GhostButton", "title: 'Go';"));
    scene.item(u"button"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(scene.window(), Qt::Key_Return);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
        QCoreApplication::sendEvent(scene.window(), &again);
    }
    QCOMPARE(scene.value("presses").toInt(), 1);
}

void PlainButtonTest::theRingShowsForTheKeyboardAlone()
{
    testing::QmlScene scene(twoButtons("GhostButton", "title: 'Go';"));
    QQuickItem *button = scene.item(u"button"_s);
    QVERIFY(!testing::showsFocusRing(button));
    testing::pressByPointer(button);
    QVERIFY(!testing::showsFocusRing(button));
    QTest::keyClick(scene.window(), Qt::Key_Backtab);
    QVERIFY(testing::showsFocusRing(scene.item(u"other"_s)));
    QTest::keyClick(scene.window(), Qt::Key_Tab);
    QVERIFY(testing::showsFocusRing(button));
    QVERIFY(!testing::showsFocusRing(scene.item(u"other"_s)));
}

void PlainButtonTest::tabGoesInReadingOrder()
{
    testing::QmlScene scene(twoButtons("PrimaryButton", "title: 'Go';"));
    QCOMPARE(testing::tabOrder(scene.window()),
             QList({scene.item(u"other"_s), scene.item(u"button"_s)}));
}

void PlainButtonTest::thePointerBecomesAHand()
{
    testing::QmlScene scene(twoButtons("PrimaryButton", "title: 'Go';"));
    QQuickItem *button = scene.item(u"button"_s);
    QTest::mouseMove(scene.window(), button->mapToScene({10, 10}).toPoint());
    QTRY_COMPARE(scene.window()->cursor().shape(), Qt::PointingHandCursor);
    QTRY_VERIFY(button->property("hovered").toBool());
}

void PlainButtonTest::whenNotEnabledThePointerLightsNothing()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, properties);
    testing::QmlScene scene(twoButtons(type, properties + "enabled: false;"));
    QQuickItem *button = scene.item(u"button"_s);
    const auto *ground = button->property("background").value<QQuickItem *>();
    const QVariant before = ground->property("color");
    // The pointer may still stand there from before.
    QTest::mouseMove(scene.window(), {300, 300});
    QTest::mouseMove(scene.window(), button->mapToScene({10, 10}).toPoint());
    QTRY_VERIFY(button->property("hovered").toBool());
    QCOMPARE(ground->property("color"), before);
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::PlainButtonTest)
#include "plain_button_test.moc"
