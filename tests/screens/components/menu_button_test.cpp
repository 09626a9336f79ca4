#include "support/qml_fixture.h"

#include <QSignalSpy>

using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// A button with three choices, of which it takes each that is chosen.
class MenuButtonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_scene = std::make_unique<QmlScene>(
            "Item { id: root; property string choice: 'Choose…'; property int openings: 0;"
            "property list<string> entries: ['One', 'Two', 'Three'];"
            "Column { PlainButton { text: 'other'; width: 40; height: 20 }"
            "MenuButton { objectName: 'menu'; width: 220; text: root.choice;"
            "symbol: 'externaldrive'; choices: root.entries; onOpened: ++root.openings;"
            "onPicked: index => root.choice = root.entries[index] } } }");
        m_button = m_scene->item(u"menu"_s);
    }
    void cleanup() { m_scene.reset(); }

    void saysWhatIsChosen()
    {
        QCOMPARE(accessibleRole(m_button), QAccessible::Button);
        QCOMPARE(accessibleName(m_button), u"Choose…"_s);
        QVERIFY(!entry(u"One"_s));
    }

    void aPointerChooses()
    {
        QVERIFY(pressByPointer(m_button));
        QTRY_VERIFY(entry(u"Two"_s));
        QCOMPARE(m_scene->value("openings").toInt(), 1);
        settle();
        QVERIFY(pressByPointer(entry(u"Two"_s)));
        QTRY_COMPARE(accessibleName(m_button), u"Two"_s);
        QTRY_VERIFY(!isOpen());
    }

    void keysChoose_data()
    {
        QTest::addColumn<Qt::Key>("opener");
        QTest::addColumn<Qt::Key>("chooser");
        QTest::newRow("space") << Qt::Key_Space << Qt::Key_Space;
        QTest::newRow("return") << Qt::Key_Return << Qt::Key_Return;
        QTest::newRow("enter") << Qt::Key_Down << Qt::Key_Enter;
    }
    void keysChoose()
    {
        QFETCH(const Qt::Key, opener);
        QFETCH(const Qt::Key, chooser);
        QVERIFY(pressByKey(m_button, opener));
        QTRY_VERIFY(isOpen());
        QTest::keyClick(m_scene->window(), Qt::Key_Down);
        QTest::keyClick(m_scene->window(), Qt::Key_Down);
        QTest::keyClick(m_scene->window(), Qt::Key_Down);
        QTest::keyClick(m_scene->window(), Qt::Key_Up);
        QTest::keyClick(m_scene->window(), chooser);
        QTRY_COMPARE(accessibleName(m_button), u"Two"_s);
        QTRY_VERIFY(!isOpen());
        QTRY_COMPARE(m_scene->window()->activeFocusItem(), m_button);
        QVERIFY(showsFocusRing(m_button));
    }

    void aScreenReaderChooses()
    {
        QVERIFY(pressByScreenReader(m_button));
        QTRY_VERIFY(entry(u"Three"_s));
        QVERIFY(pressByScreenReader(entry(u"Three"_s)));
        QTRY_COMPARE(accessibleName(m_button), u"Three"_s);
        QTRY_VERIFY(!isOpen());
    }

    void escapeAndAPressOutsideChooseNothing()
    {
        QVERIFY(pressByKey(m_button, Qt::Key_Space));
        QTRY_VERIFY(isOpen());
        QTest::keyClick(m_scene->window(), Qt::Key_Escape);
        QTRY_VERIFY(!isOpen());
        QTRY_COMPARE(m_scene->window()->activeFocusItem(), m_button);
        QVERIFY(pressByPointer(m_button));
        QTRY_VERIFY(isOpen());
        settle();
        QTest::mouseClick(m_scene->window(), Qt::LeftButton, {}, {400, 300});
        QTRY_VERIFY(!isOpen());
        QCOMPARE(accessibleName(m_button), u"Choose…"_s);
    }

    void aSecondPressCloses()
    {
        QVERIFY(pressByPointer(m_button));
        QTRY_VERIFY(isOpen());
        settle();
        QVERIFY(pressByPointer(m_button));
        QTRY_VERIFY(!isOpen());
    }

    void opensUpwardsWhereThereIsNoRoomBelow()
    {
        m_scene->window()->resize(480, 190);
        m_button->parentItem()->setY(135);
        QVERIFY(pressByPointer(m_button));
        QTRY_VERIFY(entry(u"Three"_s));
        settle();
        QVERIFY(entry(u"Three"_s)->mapToScene({0, entry(u"Three"_s)->height()}).y() <=
                m_button->mapToScene({0, 0}).y());
    }

    void choicesMayComeWhileItIsOpen()
    {
        QVERIFY(pressByPointer(m_button));
        QTRY_VERIFY(entry(u"Three"_s));
        m_scene->root()->setProperty("entries", QStringList{u"One"_s, u"STICK"_s});
        QTRY_VERIFY(entry(u"STICK"_s));
        QVERIFY(!entry(u"Three"_s));
        QVERIFY(isOpen());
        settle();
        QVERIFY(pressByPointer(entry(u"STICK"_s)));
        QTRY_COMPARE(accessibleName(m_button), u"STICK"_s);
    }

private:
    bool isOpen() const { return m_button->property("isOpen").toBool(); }
    QQuickItem *entry(const QString &name) const
    {
        return itemNamed(m_scene->window()->contentItem(), name, QAccessible::MenuItem);
    }
    void settle() const
    {
        QSignalSpy drawn(m_scene->window(), &QQuickWindow::frameSwapped);
        m_scene->window()->update();
        QVERIFY(drawn.wait(5000));
    }

    std::unique_ptr<QmlScene> m_scene;
    QQuickItem *m_button = nullptr;
};

QTEST_MAIN(MenuButtonTest)
#include "menu_button_test.moc"
