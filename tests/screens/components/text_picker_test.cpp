// How texts are taken along: selected, copied, asked for, and read whole.

#include "support/qml_fixture.h"
#include "support/screen_look.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace tarnwick {

using namespace testing;

namespace {

/// A figure, a path that is cut short, and a button in a row that is about a file; below them a
/// field.
const QByteArray scene = R"(
Item {
    Column {
        width: 200
        Figure { objectName: 'figure'; text: '1 234' }
        PlainText { objectName: 'place'; width: 80; elide: Text.ElideMiddle
            text: '/Users/anna/Music/House/dawn.mp3' }
        ListRow {
            width: 200
            height: 40
            path: '/Music/dawn.mp3'
            PlainText { objectName: 'title'; text: 'Dawn' }
            GhostButton { objectName: 'button'; x: 80; title: 'Fix it' }
        }
        LineField { objectName: 'field'; label: 'City'; text: 'Leeds' }
    }
    TextTools { objectName: 'tools'; anchors.fill: parent }
}
)";

} // namespace

class TextPickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_scene = std::make_unique<QmlScene>(scene);
        QGuiApplication::clipboard()->setText(u"before"_s);
    }
    void cleanup() { m_scene.reset(); }

    void aDragSelectsATextAsAWhole();
    void aDoublePressSelectsToo();
    void whatIsCutShortIsCopiedUncut();
    void aPressElsewhereLetsGo();
    void aTextThatComesToReadOtherwiseIsLetGo();
    void aTextThatGoesIsLetGo();
    void nothingIsSelectedInAControl();
    void aFingerSelectsNothing();
    void theRowWithTheKeyboardGivesItsPath();
    void aFieldCopiesWhatIsItsOwn();
    void theSecondButtonOffersATextAndTheRowsPath();
    void theSecondButtonOffersNoLabelOfAButton();
    void theMenuOpensByKeyToo();
    void nothingIsOfferedWhereThereIsNothing();
    void aTextThatIsCutShortStandsWholeBesideThePointer();
    void aTextThatFitsHasNoTip();
    void theHintOfAControlStandsBesideThePointer();
    void thePointerTellsWhatCanBeSelected();

private:
    QWindow *window() { return m_scene->window(); }
    QQuickItem *item(const char *name) { return m_scene->item(QLatin1StringView(name)); }
    static QPoint middle(QQuickItem *item)
    {
        return item->mapToScene(item->boundingRect().center()).toPoint();
    }
    QQuickItem *selected() { return item("tools")->property("selected").value<QQuickItem *>(); }
    static QString copied() { return QGuiApplication::clipboard()->text(); }
    void copy() { QTest::keyClick(window(), Qt::Key_C, Qt::ControlModifier); }
    void drag(QQuickItem *item);
    void rest(QQuickItem *item);
    /// What the menu offers; empty while there is none.
    QStringList offered();
    void pressSecond(QQuickItem *item)
    {
        QTest::mouseClick(window(), Qt::RightButton, {}, middle(item));
    }
    bool choose(const QString &entry);

    std::unique_ptr<QmlScene> m_scene;
};

void TextPickerTest::drag(QQuickItem *item)
{
    const QPoint start = item->mapToScene({1, 4}).toPoint();
    QTest::mousePress(window(), Qt::LeftButton, {}, start);
    for (int way = 5; way <= 30; way += 5)
        QTest::mouseMove(window(), start + QPoint(way, 0));
    QTest::mouseRelease(window(), Qt::LeftButton, {}, start + QPoint(30, 0));
}

void TextPickerTest::rest(QQuickItem *item)
{
    QTest::mouseMove(window(), middle(item) + QPoint(1, 0));
    QTest::mouseMove(window(), middle(item));
}

QStringList TextPickerTest::offered()
{
    QStringList entries;
    for (const QQuickItem *entry : itemsOfType(m_scene->window()->contentItem(), "MenuEntry"))
        entries += entry->property("text").toString();
    return entries;
}

bool TextPickerTest::choose(const QString &entry)
{
    QQuickItem *item = nullptr;
    const auto isThere = [&] {
        item = itemNamed(m_scene->window()->contentItem(), entry, QAccessible::MenuItem);
        return item != nullptr;
    };
    return QTest::qWaitFor(isThere) && pressByScreenReader(item);
}

void TextPickerTest::aDragSelectsATextAsAWhole()
{
    drag(item("figure"));
    QCOMPARE(selected(), item("figure"));
    QCOMPARE(copied(), u"before"_s);
    copy();
    QCOMPARE(copied(), u"1 234"_s);
}

void TextPickerTest::aDoublePressSelectsToo()
{
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle(item("title")));
    QVERIFY(!selected());
    QTest::mouseDClick(window(), Qt::LeftButton, {}, middle(item("title")));
    QCOMPARE(selected(), item("title"));
    copy();
    QCOMPARE(copied(), u"Dawn"_s);
}

void TextPickerTest::whatIsCutShortIsCopiedUncut()
{
    QVERIFY(item("place")->property("truncated").toBool());
    drag(item("place"));
    copy();
    QCOMPARE(copied(), u"/Users/anna/Music/House/dawn.mp3"_s);
}

void TextPickerTest::aPressElsewhereLetsGo()
{
    drag(item("figure"));
    QTest::mouseClick(window(), Qt::LeftButton, {}, {400, 300});
    QVERIFY(!selected());
    copy();
    QCOMPARE(copied(), u"before"_s);
}

void TextPickerTest::aTextThatComesToReadOtherwiseIsLetGo()
{
    for (const char *name : {"figure", "place"}) {
        drag(item(name));
        QCOMPARE(selected(), item(name));
        item(name)->setProperty("text", u"other"_s);
        QVERIFY(!selected());
    }
}

void TextPickerTest::aTextThatGoesIsLetGo()
{
    drag(item("figure"));
    item("figure")->setVisible(false);
    QVERIFY(!selected());
    drag(item("place"));
    QCOMPARE(selected(), item("place"));
    delete item("place");
    QVERIFY(!selected());
    QVERIFY(m_scene->picture().isNull() == false);
}

void TextPickerTest::nothingIsSelectedInAControl()
{
    QSignalSpy pressed(item("button"), SIGNAL(clicked()));
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle(item("button")));
    QCOMPARE(pressed.size(), 1);
    QTest::mouseDClick(window(), Qt::LeftButton, {}, middle(item("button")));
    QVERIFY(!selected());
    QVERIFY(pressByPointer(item("field")));
    QVERIFY(item("field")->hasActiveFocus());
    QVERIFY(!selected());
}

void TextPickerTest::aFingerSelectsNothing()
{
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    const QPoint start = item("figure")->mapToScene({1, 4}).toPoint();
    QTest::touchEvent(window(), screen.get()).press(0, start, window());
    QTest::touchEvent(window(), screen.get()).move(0, start + QPoint(30, 0), window());
    QTest::touchEvent(window(), screen.get()).release(0, start + QPoint(30, 0), window());
    QVERIFY(!selected());
}

void TextPickerTest::theRowWithTheKeyboardGivesItsPath()
{
    item("button")->forceActiveFocus();
    copy();
    QCOMPARE(copied(), u"/Music/dawn.mp3"_s);
    // What is selected comes first.
    drag(item("figure"));
    copy();
    QCOMPARE(copied(), u"1 234"_s);
}

void TextPickerTest::aFieldCopiesWhatIsItsOwn()
{
    drag(item("figure"));
    item("field")->forceActiveFocus();
    QTest::keyClick(window(), Qt::Key_A, Qt::ControlModifier);
    copy();
    QCOMPARE(copied(), u"Leeds"_s);
}

void TextPickerTest::theSecondButtonOffersATextAndTheRowsPath()
{
    pressSecond(item("title"));
    QTRY_COMPARE(offered(), QStringList({u"Copy"_s, u"Copy path"_s}));
    QVERIFY(choose(u"Copy path"_s));
    QCOMPARE(copied(), u"/Music/dawn.mp3"_s);
    QTRY_COMPARE(offered(), QStringList());
    pressSecond(item("title"));
    QVERIFY(choose(u"Copy"_s));
    QCOMPARE(copied(), u"Dawn"_s);
    QTRY_COMPARE(offered(), QStringList());
    pressSecond(item("figure"));
    QTRY_COMPARE(offered(), QStringList({u"Copy"_s}));
}

void TextPickerTest::theSecondButtonOffersNoLabelOfAButton()
{
    pressSecond(item("button"));
    QTRY_COMPARE(offered(), QStringList({u"Copy path"_s}));
}

void TextPickerTest::theMenuOpensByKeyToo()
{
    for (const Qt::Key key : {Qt::Key_Menu, Qt::Key_F10}) {
        item("button")->forceActiveFocus();
        QTest::keyClick(window(), key, key == Qt::Key_F10 ? Qt::ShiftModifier : Qt::NoModifier);
        QTRY_COMPARE(offered(), QStringList({u"Copy path"_s}));
        QTest::keyClick(window(), Qt::Key_Down);
        QTest::keyClick(window(), Qt::Key_Return);
        QCOMPARE(copied(), u"/Music/dawn.mp3"_s);
        QTRY_COMPARE(offered(), QStringList());
        QTRY_VERIFY(item("button")->hasActiveFocus());
        QGuiApplication::clipboard()->setText(u"before"_s);
    }
}

void TextPickerTest::nothingIsOfferedWhereThereIsNothing()
{
    QTest::mouseClick(window(), Qt::RightButton, {}, {400, 300});
    QTest::qWait(50);
    QCOMPARE(offered(), QStringList());
}

void TextPickerTest::aTextThatIsCutShortStandsWholeBesideThePointer()
{
    const QString whole = u"/Users/anna/Music/House/dawn.mp3"_s;
    const auto tips = [&] {
        return itemsWhere(m_scene->window()->contentItem(), [&](const QQuickItem *text) {
            return text != item("place") && text->inherits("QQuickText") &&
                   text->property("text") == whole;
        });
    };
    rest(item("place"));
    QTRY_COMPARE(tips().size(), 1);
    QVERIFY(!tips().first()->property("truncated").toBool());
    rest(item("figure"));
    QTRY_COMPARE(tips().size(), 0);
    // With room for all of it there is nothing to be told.
    item("place")->setWidth(400);
    QVERIFY(!item("place")->property("truncated").toBool());
    rest(item("place"));
    QCOMPARE(item("tools")->property("explained").value<QQuickItem *>(), nullptr);
}

void TextPickerTest::aTextThatFitsHasNoTip()
{
    rest(item("title"));
    QCOMPARE(item("tools")->property("explained").value<QQuickItem *>(), nullptr);
    rest(item("place"));
    QCOMPARE(item("tools")->property("explained").value<QQuickItem *>(), item("place"));
}

void TextPickerTest::theHintOfAControlStandsBesideThePointer()
{
    rest(item("button"));
    QCOMPARE(item("tools")->property("explanation").toString(), QString());
    item("button")->setProperty("hint", u"All at once"_s);
    rest(item("button"));
    QTRY_VERIFY(!itemsWhere(m_scene->window()->contentItem(), [](const QQuickItem *text) {
                     return text->inherits("QQuickText") &&
                            text->property("text") == u"All at once"_s;
                 }).isEmpty());
}

void TextPickerTest::thePointerTellsWhatCanBeSelected()
{
    rest(item("title"));
    QCOMPARE(window()->cursor().shape(), Qt::IBeamCursor);
    rest(item("button"));
    QCOMPARE(window()->cursor().shape(), Qt::PointingHandCursor);
    rest(item("field"));
    QCOMPARE(window()->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(window(), {400, 300});
    QCOMPARE(window()->cursor().shape(), Qt::ArrowCursor);
}

} // namespace tarnwick

QTEST_MAIN(tarnwick::TextPickerTest)
#include "text_picker_test.moc"
