// Fields, switches and what else a form is made of.

#include "support/qml_fixture.h"

#include <QClipboard>
#include <QGuiApplication>

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
                                "example: 'Detroit' } }");
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
                                "example: 'Detroit' } }");
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
        testing::QmlScene scene("Item { SecretField { objectName: 'field'; label: 'Key';"
                                "value: 'sesame' } }");
        QQuickItem *field = scene.item(u"field"_s);
        QCOMPARE(field->property("value").toString(), u"sesame"_s);
        const QString shown = field->property("displayText").toString();
        QCOMPARE(shown.size(), 6);
        QVERIFY(!shown.contains(u's'));
    }

    void aSecretIsToldToNoListener()
    {
        // As for a field that is made while somebody listens.
        QAccessible::setActive(true);
        testing::QmlScene scene("Item { SecretField { objectName: 'field'; label: 'Key';"
                                "value: 'sesame'; example: 'from your crew' } }");
        QQuickItem *field = scene.item(u"field"_s);
        QVERIFY(testing::pressByPointer(field));
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_Y, Qt::Key_Z})
            QTest::keyClick(scene.window(), key);
        QCOMPARE(field->property("value").toString().size(), 9);
        auto *interface = QAccessible::queryAccessibleInterface(field);
        QCOMPARE(interface->role(), QAccessible::EditableText);
        QVERIFY(interface->state().passwordEdit);
        QCOMPARE(interface->text(QAccessible::Description), u"Key"_s);
        const QString bullets(9, u'\u25cf');
        QCOMPARE(interface->text(QAccessible::Value), bullets);
        auto *text = interface->textInterface();
        QVERIFY(text);
        QCOMPARE(text->text(0, 9), bullets);
        int start = 0;
        int end = 0;
        for (const auto boundary : {QAccessible::CharBoundary, QAccessible::WordBoundary,
                                    QAccessible::LineBoundary, QAccessible::NoBoundary}) {
            const QString told = text->textBeforeOffset(5, boundary, &start, &end) +
                                 text->textAtOffset(5, boundary, &start, &end) +
                                 text->textAfterOffset(5, boundary, &start, &end);
            QCOMPARE(QString(told).remove(u'\u25cf'), QString());
        }
    }

    void aSecretCannotBeCopied()
    {
        testing::QmlScene scene("Item { SecretField { objectName: 'field'; label: 'Key';"
                                "value: 'sesame' } }");
        QGuiApplication::clipboard()->setText(u"before"_s);
        QVERIFY(testing::pressByPointer(scene.item(u"field"_s)));
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X})
            QTest::keyClick(scene.window(), key, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
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
