#include "screens/shell/guide.h"
#include "support/window_fixture.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr int control = Qt::ControlModifier;

} // namespace

/// The keys that act wherever the keyboard is.
class ShortcutsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_fixture = std::make_unique<WindowFixture>();
        QDesktopServices::setUrlHandler(u"file"_s, this, "takePage");
        m_pages.clear();
    }
    void cleanup()
    {
        QDesktopServices::unsetUrlHandler(u"file"_s);
        m_fixture.reset();
    }

    void scansAgain_data();
    void scansAgain();
    void aHeldKeyScansOnce();
    void opensTheFirstNineScreensOfTheSidebar();
    void opensTheGuide();
    void takesNothingBack_data();
    void takesNothingBack();
    void leavesTextFieldsTheirKeys_data();
    void leavesTextFieldsTheirKeys();
    void actsInATextFieldToo();
    void showsTheKeysWhereThePointerRests_data();
    void showsTheKeysWhereThePointerRests();
    void showsNoTipForARowWithoutAKey();

public Q_SLOTS:
    void takePage(const QUrl &page) { m_pages.append(page); }

private:
    AppState &app() { return m_fixture->app(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_fixture->window(), key, modifiers);
    }
    void openLibrary()
    {
        const QString path = m_fixture->writeAudio(u"dawn.mp3"_s);
        m_fixture->writeHomeDatabase({trackRecord({textRecord("pfil", path)})});
        m_fixture->openAndScan();
    }
    QQuickItem *addTextField();
    QString tip() const;

    std::unique_ptr<WindowFixture> m_fixture;
    QList<QUrl> m_pages;
};

/// A field with the text "abc" and the keyboard in it.
QQuickItem *ShortcutsTest::addTextField()
{
    QQmlComponent component(qmlEngine(m_fixture->content()->childItems().first()));
    component.setData("import QtQuick\nTextInput { width: 200; height: 20 }", {});
    auto *field = qobject_cast<QQuickItem *>(component.create());
    field->setParent(m_fixture->window());
    field->setParentItem(m_fixture->content());
    field->forceActiveFocus();
    for (const char key : {'a', 'b', 'c'})
        QTest::keyClick(m_fixture->window(), key);
    return field;
}

/// What the tip beside the pointer says; empty where there is none.
QString ShortcutsTest::tip() const
{
    for (QObject *object : m_fixture->window()->findChildren<QObject *>()) {
        if (object->inherits("QQuickToolTip") && object->property("opened").toBool())
            return object->property("text").toString();
    }
    return {};
}

void ShortcutsTest::scansAgain_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("F5") << Qt::Key_F5 << Qt::KeyboardModifiers();
    QTest::newRow("Ctrl+R") << Qt::Key_R << Qt::KeyboardModifiers(Qt::ControlModifier);
}

void ShortcutsTest::scansAgain()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    openLibrary();
    const auto before = app().result();
    press(key, modifiers);
    QTRY_VERIFY(app().result() != before);
}

void ShortcutsTest::aHeldKeyScansOnce()
{
    openLibrary();
    int scans = 0;
    connect(&app(), &AppState::phaseChanged, this,
            [&] { scans += app().phase() == AppState::Phase(Scanning{}) ? 1 : 0; });
    QTest::keyPress(m_fixture->window(), Qt::Key_F5);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(m_fixture->window(), &again);
    }
    QTest::keyRelease(m_fixture->window(), Qt::Key_F5);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(scans, 1);
}

void ShortcutsTest::opensTheFirstNineScreensOfTheSidebar()
{
    openLibrary();
    const QList<Screen> expected = {
        Screen::Health,     Screen::LibrarySafety, Screen::FixQueue,
        Screen::Duplicates, Screen::Missing,       Screen::Cues,
        Screen::Versions,   Screen::TrackId,       Screen::LibraryScore};
    for (int i = 0; i < expected.size(); ++i) {
        press(Qt::Key(Qt::Key_1 + (i + 1) % 9), Qt::ControlModifier);
        QCOMPARE(app().selection(), expected[i]);
    }
    press(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(app().selection(), Screen::LibraryScore);
}

void ShortcutsTest::opensTheGuide()
{
    m_fixture->open();
    press(Qt::Key_F1);
    QCOMPARE(m_pages.size(), 1);
    const QFileInfo page(m_pages.first().toLocalFile());
    QVERIFY2(page.isFile(), qPrintable(page.filePath()));
    QCOMPARE(page.fileName(), u"index.html"_s);
    QVERIFY(!app().toast());
}

void ShortcutsTest::takesNothingBack_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Ctrl+Z") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Ctrl+Shift+Z") << Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier);
}

void ShortcutsTest::takesNothingBack()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    openLibrary();
    app().setGenre(app().result()->tracks.front(), u"House"_s);
    const auto after = app().changeEntries();
    QCOMPARE(after.size(), 1);
    app().setSelection(Screen::ChangeLog);
    press(Qt::Key_Z, modifiers);
    QTest::qWait(50);
    QVERIFY(!app().changeEntries().first().reversed);
    QCOMPARE(app().result()->tracks.front().track.genre, u"House"_s);
    QCOMPARE(app().selection(), Screen::ChangeLog);
}

void ShortcutsTest::leavesTextFieldsTheirKeys_data()
{
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("digits") << QList<int>{Qt::Key_1, Qt::Key_9} << u"abc19"_s;
    QTest::newRow("letters") << QList<int>{Qt::Key_R, Qt::Key_Q} << u"abcrq"_s;
    QTest::newRow("undo") << QList<int>{control + Qt::Key_Z} << QString();
    QTest::newRow("cut all") << QList<int>{control + Qt::Key_A, control + Qt::Key_X} << QString();
    QTest::newRow("delete") << QList<int>{Qt::Key_Backspace, Qt::Key_Home, Qt::Key_Delete}
                            << u"b"_s;
}

void ShortcutsTest::leavesTextFieldsTheirKeys()
{
    QFETCH(QList<int>, keys);
    openLibrary();
    const auto before = app().result();
    const QQuickItem *field = addTextField();
    for (const int key : keys)
        press(Qt::Key(key & ~control), Qt::KeyboardModifiers(key & control));
    QTEST(field->property("text").toString(), "text");
    QCOMPARE(app().selection(), Screen::LibraryScore);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(app().result(), before);
    QVERIFY(m_pages.isEmpty());
}

void ShortcutsTest::actsInATextFieldToo()
{
    openLibrary();
    const QQuickItem *field = addTextField();
    press(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(app().selection(), Screen::Health);
    press(Qt::Key_F1);
    QCOMPARE(m_pages.size(), 1);
    const auto before = app().result();
    press(Qt::Key_R, Qt::ControlModifier);
    QTRY_VERIFY(app().result() != before);
    QCOMPARE(field->property("text").toString(), u"abc"_s);
}

void ShortcutsTest::showsTheKeysWhereThePointerRests_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("tip");
    QTest::newRow("first row") << u"Library score"_s << u"Library score (Ctrl+1)"_s;
    QTest::newRow("ninth row") << u"Track ID"_s << u"Track ID (Ctrl+9)"_s;
    QTest::newRow("rescan") << u"Rescan"_s << u"Scan the library again (F5)"_s;
}

void ShortcutsTest::showsTheKeysWhereThePointerRests()
{
    QFETCH(QString, place);
    QFETCH(QString, tip);
    m_fixture->open();
    const QQuickItem *item = m_fixture->button(place);
    QTest::mouseMove(m_fixture->window(),
                     item->mapToScene(item->boundingRect().center()).toPoint());
    QTRY_COMPARE(this->tip(), tip);
    QTest::mouseMove(m_fixture->window(), QPoint(800, 700));
    QTRY_COMPARE(this->tip(), QString());
}

void ShortcutsTest::showsNoTipForARowWithoutAKey()
{
    m_fixture->open();
    const QQuickItem *row = m_fixture->button(u"Gig check"_s);
    QTest::mouseMove(m_fixture->window(), row->mapToScene(row->boundingRect().center()).toPoint());
    QTest::qWait(1000);
    QCOMPARE(tip(), QString());
}

QTEST_MAIN(ShortcutsTest)
#include "shortcuts_test.moc"
