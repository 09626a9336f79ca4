#include "tarnwick/main_window.h"

#include "screens/safety/safety_texts.h"
#include "screens/shell/scanning_presenter.h"
#include "support/running_program.h"
#include "support/window_fixture.h"

#include <QQuickItem>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray track(QStringView path, QStringView title)
{
    return trackRecord({textRecord("pfil", path), textRecord("tsng", title)});
}

/// The ways in which a person presses something.
enum class Way { Pointer, Space, Return, Enter, ScreenReader };

bool press(QQuickItem *item, Way way)
{
    switch (way) {
    case Way::Pointer:
        return pressByPointer(item);
    case Way::Space:
        return pressByKey(item, Qt::Key_Space);
    case Way::Return:
        return pressByKey(item, Qt::Key_Return);
    case Way::Enter:
        return pressByKey(item, Qt::Key_Enter);
    case Way::ScreenReader:
        return pressByScreenReader(item);
    }
    return false;
}

void everyWay()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("pointer") << Way::Pointer;
    QTest::newRow("space") << Way::Space;
    QTest::newRow("return") << Way::Return;
    QTest::newRow("enter") << Way::Enter;
    QTest::newRow("screen reader") << Way::ScreenReader;
}

} // namespace

/// The window as a whole, over real libraries on disk.
class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_fixture = std::make_unique<WindowFixture>();
    }
    void cleanup() { m_fixture.reset(); }

    void hasTheSizeThatTheViewsNeed();
    void letsTheDeskShowAsSoonAsThereIsRoom();
    void looksForLibrariesAgainOnceItHasAppeared();
    void closesInTheMiddleOfAScan();

    void offersTheLibrariesFound();
    void saysWhereThereIsNoDatabase();
    void saysWhereThereIsNoLibrary();
    void warnsOfARunningSeratoAndScansAllTheSame();
    void scansTheLibraryOfARow_data() { everyWay(); }
    void scansTheLibraryOfARow();
    void comesBackToTheChoiceWhereTheScanFails();

    void showsHowFarTheScanHasCome();
    void endsTheScanWithAFullBar();

    void showsTheScoreAfterAScan();
    void goesToTheWorstDimension_data() { everyWay(); }
    void goesToTheWorstDimension();

    void hasNoFiguresBeforeTheFirstScan();
    void opensTheScreenOfARow_data();
    void opensTheScreenOfARow();
    void pressesARowOfTheSidebar_data() { everyWay(); }
    void pressesARowOfTheSidebar();
    void goesThroughTheSidebarByArrowKeys();
    void dimsWhatIsNotBuilt();
    void reachesEveryControlByTabInReadingOrder();
    void rescans_data() { everyWay(); }
    void rescans();
    void rescansNothingWhereThereIsNothing();

    void showsAToast();
    void showsAReversibleToast();
    void undoesNothingFromTheToast_data() { everyWay(); }
    void undoesNothingFromTheToast();

private:
    AppState &app() { return m_fixture->app(); }
    bool isOnShow(const QString &words) { return m_fixture->texts().contains(words); }
    void writeSmallLibrary();

    std::unique_ptr<WindowFixture> m_fixture;
};

void MainWindowTest::writeSmallLibrary()
{
    const QString there = m_fixture->writeAudio(u"Music/dawn.mp3"_s);
    m_fixture->writeHomeDatabase({track(there, u"Dawn"), track(u"nowhere/ebb.mp3", u"Ebb")});
}

void MainWindowTest::hasTheSizeThatTheViewsNeed()
{
    m_fixture->open();
    QCOMPARE(m_fixture->window()->minimumSize(), QSize(1120, 720));
    QCOMPARE(m_fixture->window()->title(), u"Tarnwick"_s);
    QQuickItem *root = m_fixture->content()->childItems().first();
    QQuickItem *panel = root->childItems().first();
    QCOMPARE(panel->mapRectToScene(panel->boundingRect()), QRectF(0, 0, 1120, 720));
    QQuickItem *row = m_fixture->button(u"Health"_s);
    QVERIFY(row->mapRectToScene(row->boundingRect()).right() < 238);
}

void MainWindowTest::letsTheDeskShowAsSoonAsThereIsRoom()
{
    m_fixture->open(AppState::Environment::Ignored, {1440, 900});
    QQuickItem *root = m_fixture->content()->childItems().first();
    QQuickItem *panel = root->childItems().first();
    QCOMPARE(panel->mapRectToScene(panel->boundingRect()), QRectF(14, 14, 1412, 872));
}

void MainWindowTest::looksForLibrariesAgainOnceItHasAppeared()
{
    m_fixture->launch(AppState::Environment::Ignored);
    MainWindow window(app());
    writeSmallLibrary();
    QVERIFY(app().locations().isEmpty());
    QSignalSpy looked(&app(), &AppState::locationsChanged);
    window.show();
    QTRY_COMPARE(app().locations().size(), 1);
    window.window()->hide();
    window.window()->show();
    window.window()->update();
    QTest::qWait(60);
    QCOMPARE(looked.count(), 1);
}

void MainWindowTest::closesInTheMiddleOfAScan()
{
    QByteArrayList tracks;
    for (int i = 0; i < 5000; ++i)
        tracks += track(u"nowhere/%1.mp3"_s.arg(i), u"Title");
    m_fixture->writeHomeDatabase(tracks);
    m_fixture->open();
    app().rescan();
    QVERIFY(m_fixture->waitForView(u"ScanningView"_s));
    m_fixture->close();
    QVERIFY(m_fixture->waitUntilIdle());
}

void MainWindowTest::offersTheLibrariesFound()
{
    writeSmallLibrary();
    m_fixture->writeVolumeDatabase(u"Stick"_s, {});
    m_fixture->open();
    const QStringList expected = {
        u"Let's look at your library"_s,
        u"Tarnwick reads your Serato database and reports what it finds. Nothing is changed, "
        u"moved, "
        "or uploaded — this first pass is read-only."_s,
        u"Libraries found"_s,
        u"System disk"_s,
        m_fixture->home(u"Music/_Serato_"_s),
        u"Stick"_s,
        m_fixture->root().path(u"volumes/Stick/_Serato_"_s),
        u"What this app never does"_s,
    };
    const QStringList texts = m_fixture->texts();
    const auto start = texts.indexOf(expected.first());
    QVERIFY(start > 0);
    QCOMPARE(texts.sliced(start), expected + Safety::neverDoes());
}

void MainWindowTest::saysWhereThereIsNoDatabase()
{
    m_fixture->root().makeFolder(u"home/Music/_Serato_"_s);
    m_fixture->open();
    QVERIFY(isOnShow(u"System disk"_s));
    QVERIFY(isOnShow(u"No database"_s));
    QVERIFY(!m_fixture->button(u"Scan"_s));
}

void MainWindowTest::saysWhereThereIsNoLibrary()
{
    m_fixture->open();
    QVERIFY(isOnShow(u"Libraries found"_s));
    QVERIFY(
        isOnShow(u"No _Serato_ database found. Open Serato once to create one, then rescan."_s));
    QVERIFY(isOnShow(u"What this app never does"_s));
    QVERIFY(!isOnShow(u"System disk"_s));
}

void MainWindowTest::warnsOfARunningSeratoAndScansAllTheSame()
{
    const QString warning = u"Serato is running. Reading is safe, but Tarnwick will never write "
                            "while Serato is open."_s;
    writeSmallLibrary();
    m_fixture->open();
    QVERIFY(!isOnShow(warning));
    const RunningProgram serato(u"Serato DJ Pro"_s);
    app().refreshEnvironment();
    QVERIFY(isOnShow(warning));
    QVERIFY(pressByPointer(m_fixture->button(u"Scan"_s)));
    QVERIFY(m_fixture->waitForView(u"LibraryScoreScreen"_s));
}

void MainWindowTest::scansTheLibraryOfARow()
{
    QFETCH(Way, way);
    writeSmallLibrary();
    m_fixture->open();
    QVERIFY(press(m_fixture->button(u"Scan"_s), way));
    QVERIFY(m_fixture->waitForView(u"LibraryScoreScreen"_s));
    QCOMPARE(app().result()->total(), 2);
}

void MainWindowTest::comesBackToTheChoiceWhereTheScanFails()
{
    m_fixture->root().makeFolder(u"home/Music/_Serato_"_s);
    m_fixture->open();
    app().rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->waitForView(u"FirstRunView"_s));
    QTRY_VERIFY(isOnShow(app().toast()->message));
    QVERIFY(app().toast()->message.startsWith(u"Couldn't read that library: "_s));
}

void MainWindowTest::showsHowFarTheScanHasCome()
{
    writeSmallLibrary();
    m_fixture->open();
    app().rescan();
    // Lets the window change its view ahead of the first report.
    QCoreApplication::sendPostedEvents(&m_fixture->presenter());
    QVERIFY(isOnShow(u"Reading database…"_s));
    QVERIFY(isOnShow(u"0 of 0 tracks"_s));
    QVERIFY(isOnShow(u"On disk"_s));
    QVERIFY(isOnShow(u"Missing"_s));
    QQuickItem *bar =
        itemNamed(m_fixture->content(), u"Reading database…"_s, QAccessible::ProgressBar);
    QVERIFY(bar);
    QCOMPARE(bar->size(), QSizeF(420, 8));
    QCOMPARE(bar->childItems().first()->width(), 8.0);
    QVERIFY(m_fixture->waitUntilIdle());
}

void MainWindowTest::endsTheScanWithAFullBar()
{
    writeSmallLibrary();
    m_fixture->open();
    QStringList texts;
    qreal width = 0;
    connect(&app(), &AppState::progressReported, this, [&](const ScanProgress &progress) {
        if (progress.phase != u"Scoring…"_s)
            return;
        QCoreApplication::sendPostedEvents(&m_fixture->presenter());
        qobject_cast<ScanningPresenter *>(m_fixture->presenter().viewPresenter())->tellNow();
        texts = m_fixture->texts();
        QQuickItem *bar = itemNamed(m_fixture->content(), progress.phase, QAccessible::ProgressBar);
        width = bar ? bar->childItems().first()->width() : 0;
    });
    app().rescan();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(texts.contains(u"2 of 2 tracks"_s));
    QCOMPARE(width, 420.0);
}

void MainWindowTest::showsTheScoreAfterAScan()
{
    writeSmallLibrary();
    m_fixture->openAndScan();
    const auto derived = app().derived();
    const QStringList expected = {
        u"Library score"_s,
        u"Six dimensions of your Serato library, each measured from what's actually there. Fix "
        "anything and the score moves."_s,
        u"Library score"_s,
        QString::number(derived->score),
        u"/100"_s,
        derived->grade(),
        u"System disk · 2 tracks · scanned just now"_s,
        u"One thing, right now"_s,
        u"Tags & genres"_s,
        u"2 tracks have no genre"_s,
        u"The six dimensions"_s,
        u"avg = score"_s,
        u"Files & links"_s,
        u"1 file can't be found"_s,
        u"50"_s,
    };
    const QStringList texts = m_fixture->texts();
    const auto start = texts.indexOf(u"Library score"_s);
    QVERIFY(start > 0);
    QCOMPARE(texts.sliced(start, expected.size()), expected);
    for (const Dimension &dimension : derived->dimensions)
        QVERIFY(texts.contains(dimension.detail));
}

void MainWindowTest::goesToTheWorstDimension()
{
    QFETCH(Way, way);
    writeSmallLibrary();
    m_fixture->openAndScan();
    QVERIFY(press(m_fixture->button(u"Go to Track ID"_s), way));
    QCOMPARE(app().selection(), Screen::TrackId);
    QVERIFY(m_fixture->waitForView(u"TrackIDScreen"_s));
}

void MainWindowTest::hasNoFiguresBeforeTheFirstScan()
{
    writeSmallLibrary();
    m_fixture->open();
    QVERIFY(!isOnShow(u"Tracks"_s));
    for (const ScreenInfo &info : allScreens()) {
        auto *row = QAccessible::queryAccessibleInterface(m_fixture->button(info.title));
        QCOMPARE(row->text(QAccessible::Description), QString());
    }
    QVERIFY(pressByPointer(m_fixture->button(u"Health"_s)));
    QCOMPARE(app().selection(), Screen::Health);
    QTest::qWait(20);
    QCOMPARE(m_fixture->presenter().view().fileName(), u"FirstRunView.qml"_s);
}

void MainWindowTest::opensTheScreenOfARow_data()
{
    QTest::addColumn<QString>("view");
    for (const ScreenInfo &info : allScreens()) {
        const QString file = sourceOf({ViewKey::Kind::Screen, info.screen}).fileName();
        QTest::addRow("%s", qPrintable(info.rawValue)) << file.chopped(4);
    }
}

void MainWindowTest::opensTheScreenOfARow()
{
    QFETCH(QString, view);
    const Screen screen = *screenFromRawValue(QString::fromLatin1(QTest::currentDataTag()));
    writeSmallLibrary();
    m_fixture->openAndScan();
    app().setSelection(screen == Screen::Health ? Screen::Account : Screen::Health);
    QVERIFY(pressByScreenReader(m_fixture->button(infoOf(screen).title)));
    QCOMPARE(app().selection(), screen);
    QVERIFY(m_fixture->waitForView(view));
    QTRY_VERIFY(isOnShow(infoOf(screen).title));
    const bool comingSoon = isOnShow(u"This screen is designed and scheduled."_s);
    QCOMPARE(comingSoon, view == u"ComingSoonScreen"_s);
    QCOMPARE(isOnShow(infoOf(screen).phaseNote), comingSoon);
}

void MainWindowTest::pressesARowOfTheSidebar()
{
    QFETCH(Way, way);
    writeSmallLibrary();
    m_fixture->openAndScan();
    QQuickItem *row = m_fixture->button(u"Missing files"_s);
    QVERIFY(press(row, way));
    QCOMPARE(app().selection(), Screen::Missing);
    auto *seen = QAccessible::queryAccessibleInterface(row);
    QVERIFY(seen->state().selected);
    QCOMPARE(seen->text(QAccessible::Description), u"1"_s);
}

void MainWindowTest::goesThroughTheSidebarByArrowKeys()
{
    m_fixture->open();
    QQuickWindow *window = m_fixture->window();
    const auto focusAfter = [&](Qt::Key key) {
        QTest::keyClick(window, key);
        return accessibleName(window->activeFocusItem());
    };
    QCOMPARE(focusAfter(Qt::Key_Tab), u"Library score"_s);
    QCOMPARE(focusAfter(Qt::Key_Down), u"Health"_s);
    QVERIFY(showsFocusRing(window->activeFocusItem()));
    QCOMPARE(focusAfter(Qt::Key_Down), u"Library & safety"_s);
    QCOMPARE(focusAfter(Qt::Key_Up), u"Health"_s);
    QCOMPARE(focusAfter(Qt::Key_Home), u"Library score"_s);
    QCOMPARE(focusAfter(Qt::Key_Up), u"Library score"_s);
    QCOMPARE(focusAfter(Qt::Key_End), u"Account"_s);
    QCOMPARE(focusAfter(Qt::Key_Down), u"Account"_s);
    QQuickItem *last = window->activeFocusItem();
    QVERIFY(last->mapRectToScene(last->boundingRect()).bottom() < window->height());
    QTest::keyClick(window, Qt::Key_Return);
    QCOMPARE(app().selection(), Screen::Account);
}

void MainWindowTest::dimsWhatIsNotBuilt()
{
    m_fixture->open();
    for (const ScreenInfo &info : allScreens()) {
        QQuickItem *row = m_fixture->button(info.title);
        for (const char *part : {"contentItem", "background"}) {
            const auto *item = row->property(part).value<QQuickItem *>();
            QCOMPARE(item->opacity(), info.isImplemented ? 1.0 : 0.5);
        }
    }
}

void MainWindowTest::reachesEveryControlByTabInReadingOrder()
{
    writeSmallLibrary();
    m_fixture->open();
    QStringList expected;
    for (const NavGroup &group : Nav::groups()) {
        for (const Screen screen : group.screens)
            expected += infoOf(screen).title;
    }
    expected += {u"Rescan"_s, u"Scan"_s};
    QStringList reached;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        QTest::keyClick(m_fixture->window(), Qt::Key_Tab);
        QQuickItem *focused = m_fixture->window()->activeFocusItem();
        reached += accessibleName(focused);
        QVERIFY(showsFocusRing(focused));
        QCOMPARE(accessibleRole(focused), QAccessible::Button);
    }
    QCOMPARE(reached, expected);
    QTest::keyClick(m_fixture->window(), Qt::Key_Tab);
    QCOMPARE(accessibleName(m_fixture->window()->activeFocusItem()), u"Library score"_s);
}

void MainWindowTest::rescans()
{
    QFETCH(Way, way);
    writeSmallLibrary();
    m_fixture->openAndScan();
    app().setSelection(Screen::Health);
    const auto before = app().result();
    QVERIFY(press(m_fixture->button(u"Rescan"_s), way));
    QTRY_VERIFY(app().result() != before);
    QCOMPARE(app().selection(), Screen::LibraryScore);
    QVERIFY(m_fixture->waitForView(u"LibraryScoreScreen"_s));
}

void MainWindowTest::rescansNothingWhereThereIsNothing()
{
    m_fixture->open();
    QVERIFY(pressByPointer(m_fixture->button(u"Rescan"_s)));
    QCOMPARE(app().phase(), AppState::Phase(ChooseLibrary{}));
    QVERIFY(!app().toast());
}

void MainWindowTest::showsAToast()
{
    m_fixture->open();
    QVERIFY(!itemNamed(m_fixture->content(), u"Done."_s, QAccessible::AlertMessage));
    app().showToast(u"Done."_s);
    QTRY_VERIFY(itemNamed(m_fixture->content(), u"Done."_s, QAccessible::AlertMessage));
    QVERIFY(isOnShow(u"Done."_s));
    QVERIFY(!isOnShow(u"· reversible"_s));
    QVERIFY(!m_fixture->button(u"Undo"_s));
    QTRY_VERIFY_WITH_TIMEOUT(!isOnShow(u"Done."_s), 6000);
}

void MainWindowTest::showsAReversibleToast()
{
    m_fixture->open();
    app().showToast(u"Moved."_s, Reversible::Yes);
    QTRY_VERIFY(isOnShow(u"Moved."_s));
    QVERIFY(isOnShow(u"· reversible"_s));
    QQuickItem *undo = m_fixture->button(u"Undo"_s);
    QVERIFY(undo);
    QVERIFY(tabOrder(m_fixture->window()).contains(undo));
    app().showToast(u"Done."_s);
    QTRY_VERIFY(!isOnShow(u"· reversible"_s));
}

void MainWindowTest::undoesNothingFromTheToast()
{
    QFETCH(Way, way);
    m_fixture->open();
    app().showToast(u"Moved."_s, Reversible::Yes);
    QTRY_VERIFY(m_fixture->button(u"Undo"_s));
    const QUuid shown = app().toast()->id;
    QVERIFY(press(m_fixture->button(u"Undo"_s), way));
    QVERIFY(app().toast());
    QCOMPARE(app().toast()->id, shown);
    QCOMPARE(app().selection(), Screen::LibraryScore);
}

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
