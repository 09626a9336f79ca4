#include "screens/versions/versions_presenter.h"

#include "support/running_program.h"
#include "support/screen_fixture.h"
#include "support/test_files.h"

#include <QGuiApplication>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString subtitle =
    u"Different cuts of the same track. Keep the one you play, tuck the rest into an Archive "
    "crate — still in your library, just out of the way."_s;
const QString archiveTitle = u"Keep this cut, archive the rest"_s;

} // namespace

/// The Versions screen in the window, over real libraries on disk.
class VersionsScreenTest : public QObject
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
        VersionsPresenter presenter(m_user->app());
        QVERIFY(m_user->isEmptyView(Screen::Versions, &presenter));
    }

    void showsThatEverySongIsThereOnce()
    {
        addCut(u"a.mp3"_s, u"Ebb"_s, 0);
        QVERIFY(open());
        QCOMPARE(m_user->textsFrom(u"Versions"_s),
                 QStringList({u"Versions"_s, subtitle,
                              u"Safe to make changes — every fix takes a snapshot first and is "
                              "reversible for 30 days."_s,
                              u"No obvious alternate cuts. Every song appears once."_s}));
        QCOMPARE(colour(u"No obvious alternate cuts. Every song appears once."_s), good);
        QVERIFY(!m_user->button(archiveTitle));
    }

    void showsASongWithItsCuts()
    {
        addThreeCuts();
        QVERIFY(open());
        const QStringList texts = m_user->texts();
        QCOMPARE(
            texts.sliced(texts.indexOf(u"Ash — Tide"_s)),
            QStringList({u"Ash — Tide"_s, u"3 cuts"_s, u"Dub"_s, u"Ash — Tide (Dub)"_s, u"b.mp3"_s,
                         u"5 plays"_s, u"Keep"_s, u"Club mix"_s, u"Ash — Tide (Club Mix)"_s,
                         u"c.mp3"_s, u"1 play"_s, u"→ Archive"_s, u"Original"_s, u"Ash — Tide"_s,
                         u"a.mp3"_s, u"0 plays"_s, u"→ Archive"_s}));
        QVERIFY(!m_user->shows(u"No obvious alternate cuts. Every song appears once."_s));
    }

    void setsTheColumnsOfACut()
    {
        addThreeCuts();
        QVERIFY(open());
        QCOMPARE(m_user->text(u"Club mix"_s)->width(), 104.0);
        QCOMPARE(m_user->text(u"1 play"_s)->width(), 70.0);
        QCOMPARE(m_user->text(u"Keep"_s)->width(), 64.0);
        QCOMPARE(colour(u"5 plays"_s), ink);
        QCOMPARE(colour(u"1 play"_s), ink);
        QCOMPARE(colour(u"0 plays"_s), inkFaint);
        QVERIFY(!m_user->text(u"→ Archive"_s)->property("truncated").toBool());
        QCOMPARE(symbolsOf(cut(u"Ash — Tide (Dub)"_s)), QStringList{u"largecircle.fill.circle"_s});
        QCOMPARE(symbolsOf(cut(u"Ash — Tide"_s)), QStringList{u"circle"_s});
        QCOMPARE(symbolsOf(m_user->button(archiveTitle)), QStringList{u"archivebox"_s});
        double left = 0;
        for (const QString &text : {u"Dub"_s, u"Ash — Tide (Dub)"_s, u"5 plays"_s, u"Keep"_s}) {
            const double x = m_user->text(text)->mapToScene({}).x();
            QVERIFY2(x > left, qPrintable(text));
            left = x;
        }
    }

    void keepsAnyNumberOfPlaysInItsColumn()
    {
        addCut(u"a.mp3"_s, u"Tide"_s, 4294967295);
        addCut(u"b.mp3"_s, u"Tide (Dub)"_s, 5);
        QVERIFY(open());
        const QQuickItem *plays = m_user->text(u"4294967295 plays"_s);
        QCOMPARE(plays->width(), 70.0);
        QVERIFY(plays->property("paintedWidth").toReal() <= 70.0);
        QVERIFY(!plays->property("truncated").toBool());
    }

    void showsEachSongOnACardOfItsOwn()
    {
        addThreeCuts();
        addCut(u"x.mp3"_s, u"Ebb"_s, 0);
        addCut(u"y.mp3"_s, u"Ebb (Live)"_s, 0);
        QVERIFY(open());
        const QStringList texts = m_user->textsFrom(u"Ash — Ebb"_s);
        QVERIFY(m_user->shows(u"2 cuts"_s));
        QVERIFY(m_user->texts().indexOf(u"3 cuts"_s) < m_user->texts().indexOf(u"2 cuts"_s));
        QCOMPARE(buttonsNamed(archiveTitle).size(), 2);
    }

    void archivesAllButTheMostPlayed_data() { everyWay(); }
    void archivesAllButTheMostPlayed()
    {
        QFETCH(const Way, way);
        const QStringList paths = addThreeCuts();
        QVERIFY(open());
        QVERIFY(press(m_user->button(archiveTitle), way));
        QTRY_VERIFY(m_user->shows(u"Archived 2 cuts of Ash — Tide"_s));
        QCOMPARE(archiveFile(),
                 QByteArray(crateVersion() + crateEntry(paths.at(2)) + crateEntry(paths.at(0))));
        QCOMPARE(m_user->app().snapshots().size(), 1);
        QCOMPARE(m_user->app().snapshots().first().reason,
                 u"Before: archive 2 cuts of Ash — Tide"_s);
        QVERIFY(m_user->shows(u"3 cuts"_s));
        for (const QString &path : paths)
            QVERIFY(QFile::exists(u'/' + path));
    }

    void aChoiceFallsBackToTheMostPlayedCut_data() { everyWay(); }
    void aChoiceFallsBackToTheMostPlayedCut()
    {
        QFETCH(const Way, way);
        const QStringList paths = addThreeCuts();
        QVERIFY(open());
        for (const QString &title : {u"Ash — Tide (Dub)"_s, u"Ash — Tide (Club Mix)"_s}) {
            QVERIFY(press(cut(title), way));
            QVERIFY(m_user->waitForPicture());
            QVERIFY(isChosen(u"Ash — Tide (Dub)"_s));
            QVERIFY(!isChosen(u"Ash — Tide (Club Mix)"_s));
            QVERIFY(!isChosen(u"Ash — Tide"_s));
        }
        QVERIFY(press(m_user->button(archiveTitle), way));
        QTRY_COMPARE(archiveFile(), QByteArray(crateVersion() + crateEntry(paths.at(2)) +
                                               crateEntry(paths.at(0))));
    }

    void showsThatItIsBusyWhileItArchives()
    {
        addThreeCuts();
        QVERIFY(open());
        QQuickItem *button = m_user->button(archiveTitle);
        bool downOnAPicture = false;
        const QObject onlooker;
        connect(
            m_user->window(), &QQuickWindow::afterRendering, &onlooker,
            [&] { downOnAPicture |= button->property("down").toBool() && !m_user->app().toast(); },
            Qt::DirectConnection);
        QVERIFY(pressByPointer(button));
        QVERIFY(button->property("down").toBool());
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QTRY_VERIFY(m_user->app().toast());
        QVERIFY(downOnAPicture);
        QVERIFY(!button->property("down").toBool());
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void refusesWhileSeratoRuns()
    {
        addThreeCuts();
        QVERIFY(open());
        const RunningProgram serato(u"Serato DJ Pro"_s);
        m_user->app().refreshEnvironment();
        QTRY_VERIFY(m_user->shows(u"Serato is running. Changes are blocked until you close it — "
                                  "reading stays available."_s));
        QVERIFY(m_user->button(archiveTitle)->isEnabled());
        QVERIFY(pressByPointer(m_user->button(archiveTitle)));
        QTRY_VERIFY(m_user->shows(u"Close Serato before writing crates."_s));
        QCOMPARE(archiveFile(), QByteArray("(none)"));
        QVERIFY(m_user->app().snapshots().isEmpty());
    }

    void tabGoesFromCutToCutAndToTheButton()
    {
        addThreeCuts();
        QVERIFY(open());
        QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
        QStringList reached;
        for (int i = 0; i < 4; ++i) {
            QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
            reached += accessibleName(m_user->window()->activeFocusItem());
            QTest::keyClick(m_user->window(), Qt::Key_Tab);
        }
        QCOMPARE(reached, QStringList({u"Ash — Tide (Dub)"_s, u"Ash — Tide (Club Mix)"_s,
                                       u"Ash — Tide"_s, archiveTitle}));
    }

    void goesToTheEndOfALongListByKeys()
    {
        for (int i = 100; i < 300; ++i) {
            addCut(u"%1.mp3"_s.arg(i), u"Song %1"_s.arg(i), 0);
            addCut(u"%1 live.mp3"_s.arg(i), u"Song %1 (Live)"_s.arg(i), 0);
        }
        QVERIFY(open());
        QVERIFY(m_user->shows(u"Ash — Song 100"_s));
        QVERIFY(!m_user->shows(u"Ash — Song 299"_s));
        QVERIFY(buttonsNamed(archiveTitle).size() < 12);
        QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
        QTest::keyClick(m_user->window(), Qt::Key_Tab); // past the stop that scrolls
        QTest::keyClick(m_user->window(), Qt::Key_End);
        QTRY_VERIFY(m_user->shows(u"Ash — Song 299"_s));
        QTest::keyClick(m_user->window(), Qt::Key_Return);
        QTRY_VERIFY(m_user->shows(u"Archived 1 cut of Ash — Song 299"_s));
    }

private:
    const QString good = u"#ff2f7d55"_s;
    const QString ink = u"#ff201e1d"_s;
    const QString inkFaint = u"#6b201e1d"_s;

    bool open() { return m_user->openOn(Screen::Versions, u"VersionsScreen"_s); }
    QString addCut(const QString &name, const QString &title, quint32 plays)
    {
        return m_user->addTrack(name, {textRecord("tart", u"Ash"), textRecord("tsng", title),
                                       numberRecord("utpc", plays)});
    }
    QStringList addThreeCuts()
    {
        return {addCut(u"a.mp3"_s, u"Tide"_s, 0), addCut(u"b.mp3"_s, u"Tide (Dub)"_s, 5),
                addCut(u"c.mp3"_s, u"Tide (Club Mix)"_s, 1)};
    }
    QByteArray archiveFile() const
    {
        return contentOf(m_user->home(u"Music/_Serato_/Subcrates/Archive.crate"_s));
    }
    QQuickItem *cut(const QString &track) const { return m_user->button(track); }
    bool isChosen(const QString &track) const
    {
        return QAccessible::queryAccessibleInterface(cut(track))->state().selected;
    }
    QString colour(const QString &text) const
    {
        return m_user->text(text)->property("color").value<QColor>().name(QColor::HexArgb);
    }
    QList<QQuickItem *> buttonsNamed(const QString &name) const
    {
        QList<QQuickItem *> found;
        for (QQuickItem *item : accessibleItems(m_user->content())) {
            if (accessibleRole(item) == QAccessible::Button && accessibleName(item) == name)
                found += item;
        }
        return found;
    }
    /// The symbols that are drawn in an item.
    static QStringList symbolsOf(QQuickItem *item)
    {
        QStringList symbols;
        for (QQuickItem *child : item->childItems()) {
            if (child->isVisible() && !child->property("symbol").toString().isEmpty() &&
                child->property("heavy").isValid())
                symbols += child->property("symbol").toString();
            symbols += symbolsOf(child);
        }
        return symbols;
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(VersionsScreenTest)
#include "versions_screen_test.moc"
