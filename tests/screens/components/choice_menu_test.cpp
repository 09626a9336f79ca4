#include "support/qml_fixture.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// A menu of so many choices; the root keeps what was picked.
QByteArray menuOf(int choices)
{
    return "Item { id: root; property int picked: -1;"
           "ChoiceMenu { objectName: 'menu'; x: 20; y: 20; text: 'Lanes'; chosen: 1;"
           "choices: Array.from({ length: " +
           QByteArray::number(choices) +
           " }, (_, i) => 'Lane ' + i);"
           "onPicked: index => root.picked = index } }";
}

QQuickItem *choice(testing::QmlScene &scene, const QString &name)
{
    return testing::itemNamed(scene.window()->contentItem(), name, QAccessible::MenuItem);
}

} // namespace

class ChoiceMenuTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }

    void opensAtThePresentChoice()
    {
        testing::QmlScene scene(menuOf(5));
        QQuickItem *menu = scene.item(u"menu"_s);
        QCOMPARE(testing::accessibleName(menu), u"Lanes"_s);
        QVERIFY(!choice(scene, u"Lane 1"_s));
        QVERIFY(testing::pressByScreenReader(menu));
        QTRY_VERIFY(choice(scene, u"Lane 1"_s));
        const auto isSelected = [&](const QString &name) {
            return bool(
                QAccessible::queryAccessibleInterface(choice(scene, name))->state().selected);
        };
        QVERIFY(isSelected(u"Lane 1"_s));
        QVERIFY(!isSelected(u"Lane 0"_s));
        QTRY_COMPARE(testing::accessibleName(scene.window()->activeFocusItem()), u"Lane 1"_s);
        QVERIFY(testing::pressByScreenReader(choice(scene, u"Lane 3"_s)));
        QCOMPARE(scene.value("picked").toInt(), 3);
        QTRY_VERIFY(!choice(scene, u"Lane 1"_s));
    }

    void makesOnlyTheChoicesInView()
    {
        testing::QmlScene scene(menuOf(5000));
        QQuickItem *menu = scene.item(u"menu"_s);
        QVERIFY(testing::pressByKey(menu, Qt::Key_Return));
        QTRY_VERIFY(choice(scene, u"Lane 1"_s));
        QVERIFY(!choice(scene, u"Lane 100"_s));
        QTest::keyClick(scene.window(), Qt::Key_End);
        QTRY_VERIFY(choice(scene, u"Lane 4999"_s));
        QTest::keyClick(scene.window(), Qt::Key_Return);
        QTRY_COMPARE(scene.value("picked").toInt(), 4999);
        // The ring is where it was.
        QTRY_VERIFY(menu->hasActiveFocus());
        QVERIFY(testing::showsFocusRing(menu));
    }

    void aPressElsewhereClosesIt()
    {
        testing::QmlScene scene(menuOf(3));
        QQuickItem *menu = scene.item(u"menu"_s);
        QVERIFY(testing::pressByPointer(menu));
        QTRY_VERIFY(choice(scene, u"Lane 1"_s));
        QTest::mouseClick(scene.window(), Qt::LeftButton, {}, {470, 350});
        QTRY_VERIFY(!choice(scene, u"Lane 1"_s));
        QCOMPARE(scene.value("picked").toInt(), -1);
        QTRY_VERIFY(menu->hasActiveFocus());
        QVERIFY(!testing::showsFocusRing(menu));
    }

    void stepsAndStopsAtTheEnds()
    {
        testing::QmlScene scene(menuOf(3));
        QVERIFY(testing::pressByKey(scene.item(u"menu"_s), Qt::Key_Space));
        const auto at = [&] { return testing::accessibleName(scene.window()->activeFocusItem()); };
        QTRY_COMPARE(at(), u"Lane 1"_s);
        const QList<std::pair<Qt::Key, QString>> steps = {
            {Qt::Key_Down, u"Lane 2"_s},     {Qt::Key_Down, u"Lane 2"_s},
            {Qt::Key_PageUp, u"Lane 0"_s},   {Qt::Key_Up, u"Lane 0"_s},
            {Qt::Key_PageDown, u"Lane 2"_s}, {Qt::Key_Home, u"Lane 0"_s},
            {Qt::Key_Tab, u"Lane 0"_s},      {Qt::Key_Backtab, u"Lane 0"_s}};
        for (const auto &[key, expected] : steps) {
            QTest::keyClick(scene.window(), key);
            QCOMPARE(at(), expected);
        }
    }
};

} // namespace tarnwick

QTEST_MAIN(tarnwick::ChoiceMenuTest)
#include "choice_menu_test.moc"
