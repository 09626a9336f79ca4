// What every control of every screen owes its user, whether he sees it or hears of it.

#include "support/demo_window.h"
#include "support/screen_look.h"

#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>

#include <functional>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

bool isControl(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton");
}

bool isText(const QQuickItem *item)
{
    return item->inherits("QQuickText") || item->inherits("tarnwick::TabularText");
}

QAccessibleInterface *toldOf(QQuickItem *item)
{
    return QAccessible::queryAccessibleInterface(item);
}

/// Where the pointer can rest on an item; none while that is out of view.
std::optional<QPoint> reachable(QQuickItem *item)
{
    const QPointF middle = item->mapToScene(item->boundingRect().center());
    for (const QQuickItem *around = item; around; around = around->parentItem()) {
        if (around->clip() && !around->contains(around->mapFromScene(middle)))
            return std::nullopt;
    }
    if (!QRectF(QPointF(), item->window()->size()).contains(middle))
        return std::nullopt;
    return middle.toPoint();
}

/// An item as a person would point it out.
QString nameOf(QQuickItem *item)
{
    return u"%1 “%2”"_s.arg(QLatin1StringView(item->metaObject()->className()),
                            accessibleName(item));
}

} // namespace

class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_user = std::make_unique<DemoWindow>();
        m_user->openAndScan();
    }
    void init() { failOnAnyWarning(); }
    void cleanupTestCase() { m_user.reset(); }

    void haveANameAndCanBePressed_data() { everyScreen(); }
    void haveANameAndCanBePressed();
    void haveAHintWhereTheyHaveNoWords_data() { everyScreen(); }
    void haveAHintWhereTheyHaveNoWords();
    void areUnderAHand_data() { everyScreen(); }
    void areUnderAHand();
    void sayWhereTheyCannotBePressed_data() { everyScreen(); }
    void sayWhereTheyCannotBePressed();
    void sayWhetherTheyAreOnOrChosen_data() { everyScreen(); }
    void sayWhetherTheyAreOnOrChosen();
    void everyTextReachesAScreenReader_data() { everyScreen(); }
    void everyTextReachesAScreenReader();
    void giveThePathOfTheirRow_data();
    void giveThePathOfTheirRow();

private:
    static void everyScreen()
    {
        QTest::addColumn<Screen>("screen");
        for (const ScreenInfo &screen : allScreens())
            QTest::newRow(qPrintable(screen.title)) << screen.screen;
    }
    void show()
    {
        QFETCH(Screen, screen);
        QVERIFY(m_user->show(screen));
        // No tip stands open.
        QTest::mouseMove(m_user->window(), {2, 2});
    }
    /// The controls of the window for which that is not so; a list may still be making some.
    QString controlsWithout(const std::function<bool(QQuickItem *)> &wanted)
    {
        QStringList faults;
        for (QQuickItem *control : itemsWhere(m_user->content(), isControl)) {
            if (!wanted(control))
                faults += nameOf(control);
        }
        return faults.join(u"; "_s);
    }

    std::unique_ptr<DemoWindow> m_user;
};

void ControlsTest::haveANameAndCanBePressed()
{
    show();
    const auto isTold = [](QQuickItem *control) {
        const auto names = toldOf(control)->actionInterface()->actionNames();
        return !accessibleName(control).trimmed().isEmpty() &&
               names.contains(QAccessibleActionInterface::pressAction());
    };
    QTRY_COMPARE(controlsWithout(isTold), QString());
}

void ControlsTest::haveAHintWhereTheyHaveNoWords()
{
    show();
    const auto explainsItself = [](QQuickItem *control) {
        return !itemsWhere(control, isText).isEmpty() ||
               !control->property("hint").toString().isEmpty();
    };
    QTRY_COMPARE(controlsWithout(explainsItself), QString());
}

void ControlsTest::areUnderAHand()
{
    show();
    const auto hasHand = [this](QQuickItem *control) {
        const auto place = reachable(control);
        if (!place)
            return true;
        QTest::mouseMove(m_user->window(), *place);
        const auto expected = control->isEnabled() ? Qt::PointingHandCursor : Qt::ArrowCursor;
        return m_user->window()->cursor().shape() == expected;
    };
    QTRY_COMPARE(controlsWithout(hasHand), QString());
}

void ControlsTest::sayWhereTheyCannotBePressed()
{
    show();
    const auto isTrue = [](QQuickItem *control) {
        return toldOf(control)->state().readOnly != control->isEnabled();
    };
    QTRY_COMPARE(controlsWithout(isTrue), QString());
}

void ControlsTest::sayWhetherTheyAreOnOrChosen()
{
    show();
    int chosen = 0;
    const auto isTrue = [&chosen](QQuickItem *control) {
        const QAccessible::State state = toldOf(control)->state();
        const QVariant on = control->property("on");
        if (on.isValid() && (!state.checkable || state.checked != on.toBool()))
            return false;
        for (const char *name : {"selected", "kept", "chosen"}) {
            const QVariant is = control->property(name);
            chosen += is.toBool() ? 1 : 0;
            if (is.isValid() && (!state.selectable || state.selected != is.toBool()))
                return false;
        }
        return true;
    };
    QTRY_COMPARE(controlsWithout(isTrue), QString());
    QVERIFY(chosen > 0); // the sidebar's row at the least
}

void ControlsTest::everyTextReachesAScreenReader()
{
    show();
    const auto unheard = [this] {
        QStringList told;
        for (QQuickItem *item : accessibleItems(m_user->content()))
            told += {accessibleName(item), toldOf(item)->text(QAccessible::Description)};
        QStringList texts;
        for (const QQuickItem *text : itemsWhere(m_user->content(), isText))
            texts += text->property("text").toString();
        texts.removeIf(
            [&told](const QString &words) { return words.isEmpty() || told.contains(words); });
        return texts.join(u"; "_s);
    };
    QTRY_COMPARE(unheard(), QString());
}

void ControlsTest::giveThePathOfTheirRow_data()
{
    QTest::addColumn<Screen>("screen");
    for (const Screen screen : {Screen::FixQueue, Screen::Duplicates, Screen::Missing,
                                Screen::Versions, Screen::TrackId, Screen::Loudness})
        QTest::newRow(qPrintable(infoOf(screen).title)) << screen;
}

void ControlsTest::giveThePathOfTheirRow()
{
    show();
    QStringList paths;
    for (const ScannedTrack &scanned : m_user->app().result()->tracks)
        paths += scanned.track.absolutePath();
    const auto isInARow = [](const QQuickItem *item) {
        while (item && item->property("path").toString().isEmpty())
            item = item->parentItem();
        return item != nullptr;
    };
    QQuickItem *control = nullptr;
    const auto isThere = [&] {
        control = itemsWhere(m_user->content(), [&](const QQuickItem *item) {
                      return isControl(item) && isInARow(item);
                  }).value(0);
        return control != nullptr;
    };
    QTRY_VERIFY(isThere());
    QGuiApplication::clipboard()->clear();
    control->forceActiveFocus();
    QTest::keyClick(m_user->window(), Qt::Key_C, Qt::ControlModifier);
    const QString copied = QGuiApplication::clipboard()->text();
    QVERIFY2(paths.contains(copied), qPrintable(copied));
}

QTEST_MAIN(ControlsTest)
#include "controls_test.moc"
