#include "screens/crate_hygiene/crate_hygiene_presenter.h"

#include "support/running_program.h"
#include "support/screen_fixture.h"
#include "support/test_files.h"

#include <QGuiApplication>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The Crate hygiene screen in the window, over real libraries on disk.
class CrateHygieneScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsNothingWithoutALibrary()
    {
        m_user->open();
        CrateHygienePresenter presenter(m_user->app());
        QVERIFY(m_user->isEmptyView(Screen::Hygiene, &presenter));
    }

    void showsThatAllIsTidy()
    {
        QVERIFY(open());
        QCOMPARE(
            m_user->textsFrom(u"Crate hygiene"_s),
            QStringList(
                {u"Crate hygiene"_s,
                 u"Tidy the shelves: merge crates that are basically the same, file loose tracks, "
                 "and settle on one spelling per genre."_s,
                 u"Safe to make changes — every fix takes a snapshot first and is reversible for "
                 "30 days."_s,
                 u"0"_s, u"Crates"_s, u"0"_s, u"Near-duplicates"_s, u"0"_s, u"Orphan tracks"_s,
                 u"0"_s, u"Genre variants"_s, u"Near-duplicate crates"_s,
                 u"No crates overlap enough to merge."_s, u"Every track lives in a crate"_s,
                 u"Filing loose tracks into an Unsorted crate makes them easy to find and place."_s,
                 u"Genre spelling variants"_s, u"Genres are spelled consistently."_s}));
        for (const QString &text :
             {u"No crates overlap enough to merge."_s, u"Genres are spelled consistently."_s})
            QCOMPARE(colourOf(m_user->text(text)), good);
        QCOMPARE(colourOf(m_user->text(u"Every track lives in a crate"_s)), ink);
        QCOMPARE(colourOf(tray()), good);
        QCOMPARE(coloursOfStats(), QStringList({ink, good, good, good}));
        for (const QString &button : {u"Merge"_s, u"File 0"_s})
            QVERIFY(!m_user->button(button));
    }

    void showsWhatCouldBeTidied()
    {
        addAll();
        QVERIFY(open());
        QCOMPARE(
            m_user->textsFrom(u"Crate hygiene"_s).sliced(3),
            QStringList(
                {u"3"_s,
                 u"Crates"_s,
                 u"2"_s,
                 u"Near-duplicates"_s,
                 u"2"_s,
                 u"Orphan tracks"_s,
                 u"2"_s,
                 u"Genre variants"_s,
                 u"Near-duplicate crates"_s,
                 u"100%"_s,
                 u"Big  ·  Small"_s,
                 u"2 shared tracks · 4 / 2"_s,
                 u"66%"_s,
                 u"Big  ·  Other"_s,
                 u"2 shared tracks · 4 / 3"_s,
                 u"2 tracks aren't in any crate"_s,
                 u"Filing loose tracks into an Unsorted crate makes them easy to find and place."_s,
                 u"Genre spelling variants"_s,
                 u"House  ·  house"_s,
                 u"3 tracks → standardise on “House”"_s,
                 u"DUB  ·  Dub"_s,
                 u"2 tracks → standardise on “DUB”"_s}));
        QCOMPARE(coloursOfStats(), QStringList({ink, warn, warn, warn}));
        QCOMPARE(colourOf(m_user->text(u"66%"_s)), warn);
        QCOMPARE(m_user->text(u"66%"_s)->parentItem()->width(), 46.0);
        QCOMPARE(colourOf(m_user->text(u"Big  ·  Small"_s)), ink);
        QCOMPARE(colourOf(m_user->text(u"House  ·  house"_s)), ink);
        QCOMPARE(colourOf(m_user->text(u"2 tracks aren't in any crate"_s)), ink);
        QCOMPARE(colourOf(tray()), warn);
        QCOMPARE(buttons(), QStringList({u"Merge: Big  ·  Small"_s, u"Merge: Big  ·  Other"_s,
                                         u"File 2: 2 tracks aren't in any crate"_s,
                                         u"Unify to House: House  ·  house"_s,
                                         u"Unify to DUB: DUB  ·  Dub"_s}));
        QVERIFY(shownSymbol(m_user->button(u"File 2"_s), u"tray.and.arrow.down"_s));
    }

    void partsTheRowsOfACardByARule()
    {
        addAll();
        QVERIFY(open());
        // No rule below a heading, one between two crates, none in a card of one row.
        QCOMPARE(rulesAbove({u"Near-duplicate crates"_s, u"Big  ·  Small"_s, u"Big  ·  Other"_s,
                             u"2 tracks aren't in any crate"_s, u"Genre spelling variants"_s,
                             u"House  ·  house"_s, u"DUB  ·  Dub"_s}),
                 QList<bool>({false, false, true, false, false, false, true}));
    }

    void mergesTwoCrates_data() { everyWay(); }
    void mergesTwoCrates()
    {
        QFETCH(const Way, way);
        addAll();
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Merge"_s), way));
        QTRY_VERIFY(m_user->shows(u"Merged Small into Big"_s));
        QVERIFY(!QFile::exists(cratePath(u"Small"_s)));
        QCOMPARE(m_user->app().heldItems().size(), 1);
        QVERIFY(QFile::exists(m_user->app().heldItems().first().heldPath));
        QTRY_VERIFY(!m_user->shows(u"Big  ·  Small"_s));
        QVERIFY(m_user->shows(u"Big  ·  Other"_s));
    }

    void filesTheTracksOfNoCrate_data() { everyWay(); }
    void filesTheTracksOfNoCrate()
    {
        QFETCH(const Way, way);
        const QStringList paths = addAll();
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"File 2"_s), way));
        QTRY_VERIFY(m_user->shows(u"Filed 2 orphans into Unsorted"_s));
        QCOMPARE(contentOf(cratePath(u"Unsorted"_s)),
                 QByteArray(crateVersion() + crateEntry(paths.at(4)) + crateEntry(paths.at(5))));
        QTRY_VERIFY(m_user->shows(u"Every track lives in a crate"_s));
        QVERIFY(!m_user->button(u"File 2"_s));
        QCOMPARE(colourOf(tray()), good);
    }

    void unifiesAGenre_data() { everyWay(); }
    void unifiesAGenre()
    {
        QFETCH(const Way, way);
        addAll();
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Unify to House"_s), way));
        QTRY_VERIFY(m_user->shows(u"Unified 1 track to House"_s));
        const QByteArray database = contentOf(m_user->home(u"Music/_Serato_/database V2"_s));
        QVERIFY(!database.contains(textRecord("tgen", u"house")));
        QCOMPARE(database.count(textRecord("tgen", u"House")), 3);
        QTRY_VERIFY(!m_user->button(u"Unify to House"_s));
        QVERIFY(m_user->button(u"Unify to DUB"_s));
    }

    void showsThatItIsBusy_data()
    {
        QTest::addColumn<QString>("title");
        for (const char *title : {"Merge", "File 2", "Unify to House"})
            QTest::newRow(title) << QString::fromLatin1(title);
    }
    void showsThatItIsBusy()
    {
        QFETCH(const QString, title);
        addAll();
        QVERIFY(open());
        QPointer<QQuickItem> button = m_user->button(title);
        bool downOnAPicture = false;
        const QObject onlooker;
        connect(
            m_user->window(), &QQuickWindow::afterRendering, &onlooker,
            [&] { downOnAPicture |= button->property("down").toBool() && !m_user->app().toast(); },
            Qt::DirectConnection);
        QVERIFY(pressByPointer(button));
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QTRY_VERIFY(m_user->app().toast());
        QVERIFY(downOnAPicture);
        QVERIFY(!button || !button->property("down").toBool());
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void refusesWhileSeratoRuns_data() { showsThatItIsBusy_data(); }
    void refusesWhileSeratoRuns()
    {
        QFETCH(const QString, title);
        addAll();
        QVERIFY(open());
        const auto before = treeOf(m_user->home(u"Music/_Serato_"_s));
        const RunningProgram serato(u"Serato DJ Pro"_s);
        m_user->app().refreshEnvironment();
        QTRY_VERIFY(m_user->shows(u"Serato is running. Changes are blocked until you close it — "
                                  "reading stays available."_s));
        QVERIFY(m_user->button(title)->isEnabled());
        QVERIFY(pressByPointer(m_user->button(title)));
        QTRY_VERIFY(m_user->shows(u"Close Serato first."_s));
        QCOMPARE(treeOf(m_user->home(u"Music/_Serato_"_s)), before);
        QVERIFY(m_user->app().snapshots().isEmpty());
    }

    void tabGoesFromButtonToButton()
    {
        addAll();
        QVERIFY(open());
        QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
        QTest::keyClick(m_user->window(), Qt::Key_Tab); // past the stop that scrolls
        QStringList reached;
        for (int i = 0; i < 5; ++i) {
            QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
            reached += accessibleName(m_user->window()->activeFocusItem());
            QTest::keyClick(m_user->window(), Qt::Key_Tab);
        }
        QCOMPARE(reached, QStringList({u"Merge"_s, u"Merge"_s, u"File 2"_s, u"Unify to House"_s,
                                       u"Unify to DUB"_s}));
    }

    void longNamesLeaveRoomForTheButton()
    {
        const QString longName(120, u'x');
        const QString a = m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", longName)});
        m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", longName.toUpper())});
        writeCrate(longName, {a});
        writeCrate(longName.toUpper(), {a});
        QVERIFY(open());
        for (const QString &title : {u"Merge"_s, QString(u"Unify to "_s + longName)}) {
            QQuickItem *button = m_user->button(title);
            const QRectF place = button->mapRectToScene(button->boundingRect());
            QVERIFY(place.right() < 1120 - 26);
            QVERIFY(place.width() <= 260);
        }
    }

    void goesToTheEndOfALongListByKeys()
    {
        const QString a = m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"House")});
        m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", u"house")});
        for (int i = 10; i < 40; ++i)
            writeCrate(QString::number(i), {a});
        QVERIFY(open());
        QVERIFY(m_user->shows(u"435"_s));
        QVERIFY(m_user->shows(u"10  ·  11"_s));
        QVERIFY(!m_user->shows(u"38  ·  39"_s));
        QVERIFY(buttons().size() < 20);
        QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
        QTest::keyClick(m_user->window(), Qt::Key_Tab); // past the stop that scrolls
        QTest::keyClick(m_user->window(), Qt::Key_End);
        QTRY_VERIFY(m_user->shows(u"38  ·  39"_s));
        QTRY_VERIFY(m_user->button(u"Unify to House"_s));
        QTest::keyClick(m_user->window(), Qt::Key_Return);
        QTRY_VERIFY(m_user->shows(u"Genres are spelled consistently."_s));
    }

private:
    const QString good = u"#ff2f7d55"_s;
    const QString warn = u"#ffb07d10"_s;
    const QString ink = u"#ff201e1d"_s;

    bool open() { return m_user->openOn(Screen::Hygiene, u"CrateHygieneScreen"_s); }
    /// Two pairs of crates, two tracks in none, two genres in two spellings.
    QStringList addAll()
    {
        const auto add = [this](const QString &name, QStringView genre) {
            return m_user->addTrack(name, {textRecord("tgen", genre)});
        };
        const QStringList paths = {add(u"a.mp3"_s, u"House"), add(u"b.mp3"_s, u"house"),
                                   add(u"c.mp3"_s, u"House"), add(u"d.mp3"_s, u"DUB"),
                                   add(u"e.mp3"_s, u"Dub"),   add(u"f.mp3"_s, u"")};
        writeCrate(u"Big"_s, paths.first(4));
        writeCrate(u"Other"_s, {paths[2], paths[3], u"elsewhere.mp3"_s});
        writeCrate(u"Small"_s, paths.first(2));
        return paths;
    }
    QString cratePath(const QString &name) const
    {
        return m_user->home(u"Music/_Serato_/Subcrates/%1.crate"_s.arg(name));
    }
    void writeCrate(const QString &name, const QStringList &entries) const
    {
        QByteArray bytes = crateVersion();
        for (const QString &entry : entries)
            bytes += crateEntry(entry);
        put(cratePath(name), bytes);
    }

    static QString colourOf(QQuickItem *item)
    {
        return item->property("color").value<QColor>().name(QColor::HexArgb);
    }
    /// The figures that stand over a label.
    QStringList coloursOfStats() const
    {
        QStringList colours;
        for (const QString &label :
             {u"Crates"_s, u"Near-duplicates"_s, u"Orphan tracks"_s, u"Genre variants"_s})
            colours += colourOf(m_user->text(label)->parentItem()->childItems().first());
        return colours;
    }
    /// Every button of the list with what it is about.
    QStringList buttons() const
    {
        QStringList found;
        for (QQuickItem *item : accessibleItems(m_user->content())) {
            const auto *seen = QAccessible::queryAccessibleInterface(item);
            const QString about = seen->text(QAccessible::Description);
            if (seen->role() == QAccessible::Button && !about.isEmpty() && !isInSidebar(item))
                found += seen->text(QAccessible::Name) + u": "_s + about;
        }
        return found;
    }
    static bool isInSidebar(QQuickItem *item) { return item->mapToScene({}).x() < 238; }

    QQuickItem *rowOf(const QString &text) const
    {
        QQuickItem *item = itemNamed(m_user->content(), text, QAccessible::ListItem);
        return item;
    }
    static QQuickItem *shownSymbol(QQuickItem *item, const QString &symbol)
    {
        for (QQuickItem *child : item->childItems()) {
            if (!child->isVisible())
                continue;
            if (child->property("symbol").toString() == symbol &&
                child->property("heavy").isValid())
                return child;
            if (QQuickItem *found = shownSymbol(child, symbol))
                return found;
        }
        return nullptr;
    }
    QQuickItem *tray() const
    {
        for (const QString &title :
             {u"Every track lives in a crate"_s, u"2 tracks aren't in any crate"_s}) {
            if (QQuickItem *row = rowOf(title))
                return shownSymbol(row, u"tray"_s);
        }
        return nullptr;
    }
    QList<bool> rulesAbove(const QStringList &rows) const
    {
        QList<bool> rules;
        for (const QString &name : rows) {
            bool ruled = false;
            for (QQuickItem *slice : rowOf(name)->childItems()) {
                for (QQuickItem *child : slice->childItems()) {
                    ruled |= child->isVisible() && child->height() == 1 &&
                             QByteArray(child->metaObject()->className()).startsWith("Rule");
                }
            }
            rules += ruled;
        }
        return rules;
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(CrateHygieneScreenTest)
#include "crate_hygiene_screen_test.moc"
