#include "screens/components/fonts.h"
#include "screens/track_id/track_id_presenter.h"
#include "serato/serato_parser.h"
#include "support/running_program.h"
#include "support/screen_fixture.h"
#include "support/screen_look.h"

#include <QGuiApplication>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString subtitle = u"Fill in genres so crates, filters and exports work. Suggestions come "
                         "from how you've tagged the same artists elsewhere."_s;
const QString accent = u"#ffec3013"_s;
const QString good = u"#ff2f7d55"_s;
const QString warn = u"#ffb07d10"_s;
const QString ink = u"#ff201e1d"_s;
const QString tagAll = u"Tag all 2"_s;
const QString mayWrite = u"Safe to make changes — every fix takes a snapshot first and is "
                         "reversible for 30 days."_s;

} // namespace

/// The Track ID screen in the window, over real libraries on disk.
class TrackIdScreenTest : public QObject
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
        TrackIdPresenter presenter(m_user->app());
        QVERIFY(m_user->isEmptyView(Screen::TrackId, &presenter));
    }

    void showsThatEveryTrackHasAGenre()
    {
        addTagged(u"Ash"_s, u"Pop"_s);
        QVERIFY(open());
        QCOMPARE(shown(), QStringList({u"Track ID"_s, subtitle, mayWrite, u"0"_s, u"No genre"_s,
                                       u"0"_s, u"We can suggest"_s, u"0"_s, u"≥95% — batch-ready"_s,
                                       u"Every track has a genre. Nothing to identify."_s}));
        QCOMPARE(colorOf(m_user->text(u"Every track has a genre. Nothing to identify."_s)), good);
    }

    void showsWhatCanBeTagged()
    {
        addTypical();
        QVERIFY(open());
        QCOMPARE(shown(),
                 QStringList({u"Track ID"_s,
                              subtitle,
                              mayWrite,
                              u"4"_s,
                              u"No genre"_s,
                              u"3"_s,
                              u"We can suggest"_s,
                              u"2"_s,
                              u"≥95% — batch-ready"_s,
                              u"2 tracks match a genre you've already used for that artist"_s,
                              u"Each gets a snapshot-backed, reversible tag write."_s,
                              u"Untagged"_s,
                              u"4"_s,
                              u"Ash — Dawn"_s,
                              u"AshDawn.mp3"_s,
                              u"100%"_s,
                              u"Nobody's"_s,
                              u"Nobody's.mp3"_s,
                              u"no signal yet"_s,
                              u"Bay — Dusk"_s,
                              u"BayDusk.mp3"_s,
                              u"50%"_s,
                              u"Cole — Noon"_s,
                              u"ColeNoon.mp3"_s,
                              u"100%"_s}));
        QCOMPARE(buttonsOf(m_user->view()), QStringList({tagAll, u"House"_s, u"Pop"_s, u"Soul"_s}));
        QCOMPARE(m_user->view()->property("manualGenre"), u""_s);
    }

    void paintsCountsAndConfidencesByHowSureTheyAre()
    {
        addTypical();
        QVERIFY(open());
        QCOMPARE(figuresOf(m_user->view()),
                 QStringList({u"4 "_s + warn, u"3 "_s + ink, u"2 "_s + good, u"100% "_s + good,
                              u"50% "_s + warn, u"100% "_s + good}));
        const QQuickItem *confidence = itemsOfType(m_user->view(), "Figure").last();
        QCOMPARE(confidence->property("font").value<QFont>(), Fonts::font(11, QFont::DemiBold, 0));
        QCOMPARE(confidence->parentItem()->width(), 38.0);
        QQuickItem *wand = iconOf(m_user->content(), u"wand.and.stars"_s);
        QCOMPARE(colorOf(wand), accent);
        QVERIFY(iconOf(m_user->button(tagAll), u"checkmark"_s));
        QVERIFY(iconOf(m_user->button(u"Pop"_s), u"plus.circle.fill"_s));
    }

    void aRowReadsFromLeftToRight()
    {
        addTypical();
        QVERIFY(open());
        QQuickItem *row = itemNamed(m_user->content(), u"Ash — Dawn"_s, QAccessible::ListItem);
        QVERIFY(row);
        QQuickItem *tag = iconOf(row, u"tag"_s);
        QCOMPARE(tag->width(), 18.0);
        const QList<QQuickItem *> parts = {
            tag, itemNamed(row, u"Ash — Dawn"_s, QAccessible::StaticText),
            itemNamed(row, u"100%"_s, QAccessible::StaticText), itemNamed(row, u"House"_s)};
        for (qsizetype i = 1; i < parts.size(); ++i)
            QVERIFY(placeOf(parts[i - 1]).right() < placeOf(parts[i]).left());
        QCOMPARE(itemsOfType(m_user->view(), "Rule").size(), 3); // between four rows
    }

    void tagsOneTrack_data() { everyWay(); }
    void tagsOneTrack()
    {
        QFETCH(const Way, way);
        addTypical();
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Pop"_s), way));
        QTRY_VERIFY(!m_user->shows(u"Bay — Dusk"_s));
        QTRY_VERIFY(m_user->shows(u"Ash — Dawn"_s));
        QVERIFY(!m_user->app().toast());
        QCOMPARE(genreOnDisk(u"BayDusk.mp3"_s), u"Pop"_s);
        QCOMPARE(genreOnDisk(u"AshDawn.mp3"_s), QString());
    }

    void tagsAllThatIsSure_data() { everyWay(); }
    void tagsAllThatIsSure()
    {
        QFETCH(const Way, way);
        addTypical();
        QVERIFY(open());
        QVERIFY(press(m_user->button(tagAll), way));
        QTRY_VERIFY(!m_user->button(tagAll));
        QTRY_COMPARE(buttonsOf(m_user->view()), QStringList({u"Pop"_s}));
        QCOMPARE(m_user->app().toast()->message, u"Tagged 1 track as Soul"_s);
        QCOMPARE(genreOnDisk(u"AshDawn.mp3"_s), u"House"_s);
        QCOMPARE(genreOnDisk(u"ColeNoon.mp3"_s), u"Soul"_s);
        QCOMPARE(genreOnDisk(u"BayDusk.mp3"_s), QString());
    }

    void isBusyWhileItTags()
    {
        addTypical();
        QVERIFY(open());
        for (const QString &name : {u"Pop"_s, tagAll}) {
            QQuickItem *button = m_user->button(name);
            QVERIFY(pressByPointer(button));
            QVERIFY(button->property("down").toBool());
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            QTRY_VERIFY(!QGuiApplication::overrideCursor());
        }
        QTRY_COMPARE(buttonsOf(m_user->view()), QStringList());
    }

    void showsSixtyRowsAndALineForTheRest()
    {
        addTagged(u"Ash"_s, u"Pop"_s);
        for (int i = 0; i < 62; ++i)
            addUntagged(u"Ash"_s, u"%1"_s.arg(i, 2, 10, QChar(u'0')));
        QVERIFY(open());
        QVERIFY(pressByKey(m_user->button(u"Tag all 62"_s), Qt::Key_Tab));
        QTest::keyClick(m_user->window(), Qt::Key_End);
        QCOMPARE(focusedTrack(), u"Ash — 59"_s);
        QTest::keyClick(m_user->window(), Qt::Key_Down);
        QTRY_VERIFY(m_user->shows(u"+ 2 more — tag these first, then rescan."_s));
        QVERIFY(!m_user->shows(u"Ash — 60"_s));
        QTest::keyClick(m_user->window(), Qt::Key_Return);
        QTRY_COMPARE(focusedTrack(), u"Ash — 60"_s);
        QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
        QVERIFY(m_user->shows(u"+ 1 more — tag these first, then rescan."_s));
        QVERIFY(!m_user->shows(u"Ash — 61"_s));
    }

    void aLongGenreLeavesRoomForItsTrack()
    {
        const QString endless = u"Peak time, driving, dark, and much more of that kind"_s;
        addTagged(u"Ash"_s, endless);
        addUntagged(u"Ash"_s, u"Dawn"_s);
        QVERIFY(open());
        QVERIFY(m_user->button(endless)->width() <= 180);
        QVERIFY(m_user->text(u"Ash — Dawn"_s)->width() > 400);
    }

    void offersTheBatchAloneWhileSeratoRuns()
    {
        addTypical();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        QVERIFY(open());
        QVERIFY(m_user->shows(u"Serato is running. Changes are blocked until you close it — "
                              "reading stays available."_s));
        for (const QString &genre : {u"House"_s, u"Pop"_s, u"Soul"_s}) {
            QQuickItem *button = m_user->button(genre);
            QVERIFY(!button->isEnabled());
            pressByPointer(button);
            pressByScreenReader(button);
            QVERIFY(!pressByKey(button, Qt::Key_Return));
        }
        QVERIFY(m_user->button(tagAll)->isEnabled());
        QVERIFY(pressByPointer(m_user->button(tagAll)));
        QTRY_VERIFY(m_user->app().toast());
        QCOMPARE(m_user->app().toast()->message, u"Close Serato before tagging."_s);
        QVERIFY(m_user->app().snapshots().isEmpty());
        QVERIFY(m_user->shows(u"4"_s));
    }

    void refusesWhereSeratoHasBeenStartedSince()
    {
        addTypical();
        QVERIFY(open());
        const RunningProgram serato(u"Serato DJ Pro"_s);
        QVERIFY(pressByPointer(m_user->button(u"Pop"_s)));
        QTRY_VERIFY(m_user->app().toast());
        QVERIFY(!m_user->app().toast()->reversible);
        QVERIFY(m_user->shows(u"Bay — Dusk"_s));
        QCOMPARE(genreOnDisk(u"BayDusk.mp3"_s), QString());
    }

    void theSidebarLeadsHere()
    {
        m_user->writeHomeDatabase({});
        m_user->openAndScan();
        QVERIFY(pressByScreenReader(m_user->button(u"Track ID"_s)));
        QVERIFY(m_user->waitForView(u"TrackIDScreen"_s));
    }

private:
    bool open() { return m_user->openOn(Screen::TrackId, u"TrackIDScreen"_s); }
    /// Ash and Cole of one genre each, Bay of two; a track by nobody known.
    void addTypical()
    {
        addUntagged(u"Ash"_s, u"Dawn"_s);
        addUntagged({}, u"Nobody's"_s);
        addUntagged(u"Bay"_s, u"Dusk"_s);
        addUntagged(u"Cole"_s, u"Noon"_s);
        addTagged(u"Ash"_s, u"House"_s);
        addTagged(u"Bay"_s, u"Pop"_s);
        addTagged(u"Bay"_s, u"Soul"_s);
        addTagged(u"Cole"_s, u"Soul"_s);
    }
    void addTagged(const QString &artist, const QString &genre)
    {
        m_user->addTrack(artist + u"-"_s + genre.first(3) + u".mp3"_s,
                         {textRecord("tart", artist), textRecord("tgen", genre)});
    }
    void addUntagged(const QString &artist, const QString &title)
    {
        m_user->addTrack(artist + title + u".mp3"_s,
                         {textRecord("tart", artist), textRecord("tsng", title)});
    }
    QStringList shown() const { return textsOf(m_user->view()); }
    /// Reads the database anew.
    QString genreOnDisk(const QString &file) const
    {
        const auto tracks =
            SeratoParser::parseDatabase(m_user->home(u"Music/_Serato_/database V2"_s));
        for (const SeratoTrack &track : *tracks) {
            if (track.fileName() == file)
                return track.genre;
        }
        return u"not in the database"_s;
    }
    QString focusedTrack() const
    {
        auto *seen = QAccessible::queryAccessibleInterface(m_user->window()->activeFocusItem());
        return seen ? seen->text(QAccessible::Description) : QString();
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(TrackIdScreenTest)
#include "track_id_screen_test.moc"
