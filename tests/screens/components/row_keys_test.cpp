#include "screens/components/row_keys.h"

#include "support/qml_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// Forty rows of two buttons below a header with one; row 3 has none.
constexpr auto longList = R"(
FocusScope {
    property alias rows: entries
    function replace(row) { entries.remove(row); entries.append({"name": 40, "acts": true}) }
    function setActs(row, acts) { entries.setProperty(row, "acts", acts) }
    GhostButton { title: "Before" }
    ListModel {
        id: entries
        Component.onCompleted: Array.from({length: 40}, (_, i) => append({"name": i, "acts": i !== 3}))
    }
    ListScaffold {
        id: scaffold
        anchors.fill: parent
        anchors.topMargin: 30
        title: "Rows"
        subtitle: "Many."
        model: entries
        delegate: Row {
            id: row
            required property int index
            required property int name
            required property bool acts
            width: scaffold.width
            height: 40
            GhostButton { visible: row.acts; activeFocusOnTab: false; title: "A" + row.name; onClicked: entries.remove(row.index) }
            GhostButton { visible: row.acts; activeFocusOnTab: false; title: "B" + row.name }
        }
        GhostButton { title: "Head"; onClicked: entries.remove(0) }
    }
})";

} // namespace

class RowKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_scene = std::make_unique<QmlScene>(longList, QSize(480, 400));
    }
    void cleanup() { m_scene.reset(); }

    void tabGoesThroughTheRowsInReadingOrder()
    {
        QStringList reached;
        for (int i = 0; i < 12; ++i)
            reached += after(Qt::Key_Tab);
        QCOMPARE(reached, QStringList({u"Before"_s, u"Rows"_s, u"Head"_s, u"A0"_s, u"B0"_s, u"A1"_s,
                                       u"B1"_s, u"A2"_s, u"B2"_s, u"A4"_s, u"B4"_s, u"A5"_s}));
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
    }

    void theRowThatTheListIsEnteredAtShowsIt()
    {
        reach(u"Rows"_s);
        // Without a control in the header the rows come next.
        itemNamed(m_scene->root(), u"Head"_s)->setVisible(false);
        QCOMPARE(after(Qt::Key_Tab), u"A0"_s);
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
        QCOMPARE(after(Qt::Key_Backtab), u"Rows"_s);
        QCOMPARE(after(Qt::Key_Tab), u"A0"_s);
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
    }

    void backtabGoesBack()
    {
        reach(u"A1"_s);
        QCOMPARE(after(Qt::Key_Backtab), u"B0"_s);
        QCOMPARE(after(Qt::Key_Backtab), u"A0"_s);
        QCOMPARE(after(Qt::Key_Backtab), u"Head"_s);
    }

    void arrowsKeepToTheSameControl()
    {
        reach(u"B0"_s);
        QCOMPARE(after(Qt::Key_Down), u"B1"_s);
        QCOMPARE(after(Qt::Key_Down), u"B2"_s);
        QCOMPARE(after(Qt::Key_Up), u"B1"_s);
        QCOMPARE(after(Qt::Key_End), u"B39"_s);
        QVERIFY(isInView());
        QCOMPARE(after(Qt::Key_PageUp), u"B31"_s);
        QCOMPARE(after(Qt::Key_PageDown), u"B39"_s);
        QCOMPARE(after(Qt::Key_Home), u"B0"_s);
        QVERIFY(isInView());
    }

    void tabLeavesTheLastRow()
    {
        reach(u"B0"_s);
        after(Qt::Key_End);
        QCOMPARE(after(Qt::Key_Tab), u"Before"_s);
    }

    void comesBackToTheRowWhereTheKeyboardWas()
    {
        reach(u"B2"_s);
        after(Qt::Key_Home);
        after(Qt::Key_Down);
        after(Qt::Key_Backtab);
        QCOMPARE(after(Qt::Key_Backtab), u"B0"_s);
    }

    void theNextRowTakesTheKeyboardOfARowThatGoes()
    {
        reach(u"A1"_s);
        QTest::keyClick(m_scene->window(), Qt::Key_Return);
        QTRY_COMPARE(focused(), u"A2"_s);
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
        after(Qt::Key_End);
        QTest::keyClick(m_scene->window(), Qt::Key_Return);
        QTRY_COMPARE(focused(), u"A38"_s);
    }

    void theNextRowTakesTheKeyboardAlsoWhereAnotherRowComes()
    {
        reach(u"A1"_s);
        QMetaObject::invokeMethod(m_scene->root(), "replace", Q_ARG(QVariant, 1));
        QTRY_COMPARE(focused(), u"A2"_s);
    }

    void theNextRowTakesTheKeyboardOfAControlThatGoes()
    {
        reach(u"B1"_s);
        setActs(1, false);
        QTRY_COMPARE(focused(), u"B2"_s);
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
        setActs(2, false);
        QTRY_COMPARE(focused(), u"B4"_s);
    }

    void theKeyboardLeavesRowsOfWhichNoneActs()
    {
        reach(u"A0"_s);
        for (int row = 0; row < 40; ++row)
            setActs(row, false);
        QTRY_COMPARE(focused(), u"Head"_s);
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
    }

    void aControlOfTheHeaderKeepsTheKeyboardWhereRowsGo()
    {
        reach(u"Head"_s);
        QTest::keyClick(m_scene->window(), Qt::Key_Return);
        QTest::qWait(50);
        QCOMPARE(focused(), u"Head"_s);
        QVERIFY(showsFocusRing(m_scene->window()->activeFocusItem()));
        QCOMPARE(after(Qt::Key_Tab), u"A1"_s);
    }

    void aClickMakesItsRowTheCurrentOne()
    {
        QQuickItem *button = itemNamed(m_scene->root(), u"B2"_s);
        QVERIFY(pressByPointer(button));
        QVERIFY(!showsFocusRing(button));
        QCOMPARE(after(Qt::Key_Backtab), u"A2"_s);
    }

    void keysScrollWhereNoRowHasTheKeyboard()
    {
        reach(u"Head"_s);
        QQuickItem *list = m_scene->window()->activeFocusItem();
        while (list && !list->inherits("QQuickListView"))
            list = list->parentItem();
        QVERIFY(list);
        const qreal top = list->property("contentY").toReal();
        after(Qt::Key_PageDown);
        QVERIFY(list->property("contentY").toReal() > top + 200);
        after(Qt::Key_Home);
        QCOMPARE(list->property("contentY").toReal(), top);
    }

private:
    QString focused() const { return accessibleName(m_scene->window()->activeFocusItem()); }
    void setActs(int row, bool acts)
    {
        QMetaObject::invokeMethod(m_scene->root(), "setActs", Q_ARG(QVariant, row),
                                  Q_ARG(QVariant, acts));
    }
    QString after(Qt::Key key)
    {
        QTest::keyClick(m_scene->window(), key,
                        key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        return focused();
    }
    void reach(const QString &name)
    {
        for (int i = 0; i < 20 && focused() != name; ++i)
            after(Qt::Key_Tab);
        QCOMPARE(focused(), name);
    }
    bool isInView() const
    {
        const QQuickItem *item = m_scene->window()->activeFocusItem();
        const QRectF place = item->mapRectToScene(item->boundingRect());
        return place.top() >= 30 && place.bottom() <= m_scene->window()->height();
    }

    std::unique_ptr<QmlScene> m_scene;
};

QTEST_MAIN(RowKeysTest)
#include "row_keys_test.moc"
