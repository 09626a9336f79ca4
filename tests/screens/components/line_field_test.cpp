// Fields, switches and what else a form is made of.

#include "support/qml_fixture.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

class LineFieldTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testing::failOnAnyWarning(); }

    void aFieldTakesWhatIsTyped()
    {
        testing::QmlScene scene("Item { LineField { objectName: 'field'; label: 'City';"
                                "placeholderText: 'Detroit' } }");
        QQuickItem *field = scene.item(u"field"_s);
        QCOMPARE(testing::accessibleRole(field), QAccessible::EditableText);
        QCOMPARE(testing::accessibleName(field), u"City"_s);
        QVERIFY(!testing::showsFocusRing(field));
        QVERIFY(testing::pressByPointer(field));
        QVERIFY(testing::showsFocusRing(field));
        QTest::keyClick(scene.window(), Qt::Key_X);
        QCOMPARE(field->property("text").toString(), u"x"_s);
        QCOMPARE(field->property("displayText").toString(), u"x"_s);
    }

    void thePlaceholderGoesWithTheFirstLetter()
    {
        testing::QmlScene scene("Item { LineField { objectName: 'field'; label: 'City';"
                                "placeholderText: 'Detroit' } }");
        QQuickItem *field = scene.item(u"field"_s);
        QQuickItem *shown = nullptr;
        for (QQuickItem *child : field->childItems()) {
            if (child->property("text").toString() == u"Detroit"_s)
                shown = child;
        }
        QVERIFY(shown && shown->isVisible());
        field->setProperty("text", u"Leeds"_s);
        QVERIFY(!shown->isVisible());
    }

    void aSecretIsShownToNobody()
    {
        testing::QmlScene scene("Item { LineField { objectName: 'field'; label: 'Key';"
                                "secret: true; text: 'sesame' } }");
        QQuickItem *field = scene.item(u"field"_s);
        const QString shown = field->property("displayText").toString();
        QCOMPARE(shown.size(), 6);
        QVERIFY(!shown.contains(u's'));
        auto *interface = QAccessible::queryAccessibleInterface(field);
        QVERIFY(interface->state().passwordEdit);
        QCOMPARE(interface->text(QAccessible::Description), u"Key"_s);
    }

    void aSpinnerTurnsWhileItIsSeen()
    {
        testing::QmlScene scene("Item { Spinner { objectName: 'spinner' } }");
        QQuickItem *spinner = scene.item(u"spinner"_s);
        QTRY_VERIFY(spinner->property("lit").toInt() > 0);
        spinner->setVisible(false);
        const int lit = spinner->property("lit").toInt();
        QTest::qWait(250);
        QCOMPARE(spinner->property("lit").toInt(), lit);
    }
};

} // namespace tarnwick

QTEST_MAIN(tarnwick::LineFieldTest)
#include "line_field_test.moc"
