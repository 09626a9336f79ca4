// A screen whose rows follow its head.

#include "support/qml_fixture.h"

using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr auto listWithHead = R"(
FocusScope {
    property string subtitle: "Short."
    property alias list: scaffold.list
    ListScaffold {
        id: scaffold
        anchors.fill: parent
        title: "Rows"
        subtitle: parent.subtitle
        model: 100
        delegate: Item { width: scaffold.width; height: 40 }
    }
})";

} // namespace

class ListScaffoldTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_scene = std::make_unique<QmlScene>(listWithHead, QSize(300, 400));
    }
    void cleanup() { m_scene.reset(); }

    void aHeadThatGrowsStaysInFull()
    {
        const qreal atFirst = titleY();
        growHead();
        QCOMPARE(titleY(), atFirst);
        list()->setProperty("contentY", list()->property("contentY").toReal() + 10);
        list()->setProperty("contentY", list()->property("contentY").toReal() - 10);
        growHead();
        QCOMPARE(titleY(), atFirst);
    }

    void aListThatWasScrolledStaysWhereItIs()
    {
        list()->setProperty("contentY", 1000);
        growHead();
        QCOMPARE(list()->property("contentY").toReal(), 1000.0);
    }

private:
    QQuickItem *list() const { return m_scene->value("list").value<QQuickItem *>(); }
    qreal titleY() const
    {
        return itemNamed(m_scene->root(), u"Rows"_s, QAccessible::Heading)->mapToScene({0, 0}).y();
    }
    void growHead()
    {
        const QString text = m_scene->value("subtitle").toString();
        m_scene->root()->setProperty("subtitle", text + u" A good deal longer than before."_s);
        (void)m_scene->picture();
    }

    std::unique_ptr<QmlScene> m_scene;
};

QTEST_MAIN(ListScaffoldTest)
#include "list_scaffold_test.moc"
