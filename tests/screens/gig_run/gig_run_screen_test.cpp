#include "platform/pause.h"
#include "support/gig_library.h"
#include "support/running_program.h"
#include "support/screen_fixture.h"
#include "support/test_files.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr QStringView subtitle =
    u"One pass to get the whole library stage-ready, with a set sheet at the end.";
constexpr QStringView gateOpen =
    u"Safe to make changes — every fix takes a snapshot first and is reversible for 30 days.";
constexpr QStringView gateClosed =
    u"Serato is running. Changes are blocked until you close it — reading "
    "stays available.";

/// The rows of steps that are all still to come.
QStringList stepsToCome()
{
    return {u"1"_s,
            u"Relink"_s,
            u"Waiting"_s,
            u"2"_s,
            u"Analyze grids"_s,
            u"Waiting"_s,
            u"3"_s,
            u"Detect keys"_s,
            u"Waiting"_s,
            u"4"_s,
            u"Level"_s,
            u"Waiting"_s,
            u"5"_s,
            u"Dedupe set"_s,
            u"Waiting"_s,
            u"6"_s,
            u"Render stems"_s,
            u"Waiting"_s,
            u"7"_s,
            u"Write Engine stick"_s,
            u"Waiting"_s,
            u"8"_s,
            u"Verify"_s,
            u"Waiting"_s};
}

} // namespace

/// The gig run in the window, over real libraries on disk.
class GigRunScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
        m_pauses = std::make_unique<platform::ScopedPauses>();
    }
    void cleanup()
    {
        m_user.reset();
        m_pauses.reset();
    }

    void showsAnEmptyLibrary()
    {
        QVERIFY(open());
        QCOMPARE(m_user->textsFrom(u"Gig run"_s),
                 QStringList({u"Gig run"_s, subtitle.toString(), gateOpen.toString(),
                              u"Run the prep pipeline"_s, u"0 tracks · 0 crates"_s}) +
                     stepsToCome());
    }

    void runsOverAnEmptyLibrary()
    {
        QVERIFY(open());
        QVERIFY(pressByPointer(runButton()));
        QVERIFY(endRun());
        QTRY_COMPARE(m_user->textsFrom(u"Relink"_s),
                     QStringList({u"Relink"_s,
                                  u"All files present"_s,
                                  u"Analyze grids"_s,
                                  u"Every track gridded"_s,
                                  u"Detect keys"_s,
                                  u"All keyed"_s,
                                  u"Level"_s,
                                  u"Levels even"_s,
                                  u"Dedupe set"_s,
                                  u"No duplicates"_s,
                                  u"Render stems"_s,
                                  u"Stems arrive in a later phase"_s,
                                  u"Write Engine stick"_s,
                                  u"Engine export arrives in Phase 5"_s,
                                  u"Verify"_s,
                                  u"Set sheet ready"_s,
                                  u"Set sheet"_s,
                                  u"Ready to print"_s,
                                  u"Tracks"_s,
                                  u"0"_s,
                                  u"Crates"_s,
                                  u"0"_s,
                                  u"Length"_s,
                                  u"0m"_s,
                                  u"Tempo path"_s,
                                  u"Keys"_s,
                                  u"0"_s}));
    }

    void aRunShowsHowItComesAlong_data() { everyWay(); }
    void aRunShowsHowItComesAlong()
    {
        QFETCH(const Way, way);
        addTypicalLibrary();
        QVERIFY(open());
        QVERIFY(m_user->shows(u"5 tracks · 1 crates"_s));
        QVERIFY(press(runButton(), way));
        QTRY_VERIFY(m_user->button(u"Running…"_s));
        QVERIFY(!m_user->button(u"Running…"_s)->isEnabled());
        QVERIFY(m_user->shows(u"Working…"_s));
        QCOMPARE(m_user->texts().count(u"Waiting"_s), 7);
        QCOMPARE(circleOf(u"Relink"_s), u"#ec3013"_s);
        QCOMPARE(circleOf(u"Verify"_s), u"#9b9797"_s);
        QVERIFY(pressByPointer(m_user->button(u"Running…"_s)));
        QCOMPARE(m_pauses->underWay().size(), 1);
        QVERIFY(m_pauses->endNext());
        QVERIFY(m_user->shows(u"1 need relinking"_s));
        QCOMPARE(m_user->texts().count(u"Waiting"_s), 6);
        QVERIFY(!m_user->shows(u"Set sheet"_s));
        QVERIFY(endRun());
        QVERIFY(runButton()->isEnabled());
        QCOMPARE(circleOf(u"Relink"_s), u"#b07d10"_s);
        QCOMPARE(circleOf(u"Verify"_s), u"#2f7d55"_s);
        for (const auto &text : {u"3 without a key"_s, u"2 off by ≥1.5 dB"_s, u"1 dupe groups"_s})
            QVERIFY2(m_user->shows(text), qPrintable(text));
        QCOMPARE(m_user->textsFrom(u"Set sheet"_s),
                 QStringList({u"Set sheet"_s, u"Ready to print"_s, u"Tracks"_s, u"4"_s, u"Crates"_s,
                              u"1"_s, u"Length"_s, u"1h 20m"_s, u"Tempo path"_s, u"124–124"_s,
                              u"Keys"_s, u"1"_s}));
        QVERIFY(m_user->app().changeEntries().isEmpty());
    }

    void theSheetComesIntoView()
    {
        QVERIFY(open());
        QVERIFY(pressByPointer(runButton()));
        QVERIFY(endRun());
        const auto bottomOfSheet = [this] {
            QQuickItem *last = m_user->text(u"Keys"_s);
            return last ? last->mapToScene(QPointF(0, last->height() + 30)).y() : 1e9;
        };
        QTRY_VERIFY(bottomOfSheet() <= m_user->window()->height());
    }

    void theSwitchHasSafeFixesApplied_data() { everyWay(); }
    void theSwitchHasSafeFixesApplied()
    {
        QFETCH(const Way, way);
        addTypicalLibrary();
        QVERIFY(open());
        QVERIFY(!isOn());
        QVERIFY(press(fixes(), way));
        QTRY_VERIFY(isOn());
        QVERIFY(pressByScreenReader(runButton()));
        QVERIFY(endRun());
        QVERIFY(m_user->shows(u"Levelled 2 tracks (tags)"_s));
        QVERIFY(m_user->shows(u"Held 1 duplicate copies"_s));
        QVERIFY(contentOf(m_user->home(u"loud.mp3"_s)).contains("REPLAYGAIN_TRACK_GAIN"));
        QVERIFY(QFile::exists(m_user->home(u"large.mp3"_s)));
        QVERIFY(!QFile::exists(m_user->home(u"small.mp3"_s)));
        QCOMPARE(m_user->app().heldItems().size(), 1);
        QTRY_VERIFY(m_user->shows(u"4 tracks · 1 crates"_s));
    }

    void fixesNothingWhileSeratoRunsAndSaysWhy()
    {
        addTypicalLibrary();
        QVERIFY(open());
        const RunningProgram serato(u"Serato DJ Pro"_s);
        m_user->app().refreshEnvironment();
        QTRY_VERIFY(m_user->shows(gateClosed.toString()));
        QVERIFY(pressByPointer(fixes()));
        QVERIFY(pressByPointer(runButton()));
        QVERIFY(endRun());
        QVERIFY(m_user->shows(u"2 off by ≥1.5 dB"_s));
        QVERIFY(m_user->shows(u"1 dupe groups"_s));
        QVERIFY(!contentOf(m_user->home(u"loud.mp3"_s)).contains("REPLAYGAIN"));
        QVERIFY(QFile::exists(m_user->home(u"small.mp3"_s)));
    }

    void tabGoesFromTheSwitchToTheButton()
    {
        QVERIFY(open());
        QVERIFY(pressByKey(fixes(), Qt::Key_Tab));
        QCOMPARE(m_user->window()->activeFocusItem(), runButton());
        QVERIFY(showsFocusRing(runButton()));
    }

    void theScreenForgetsItsRunWhenItIsLeft()
    {
        QVERIFY(open());
        QVERIFY(pressByPointer(fixes()));
        QVERIFY(pressByPointer(runButton()));
        QVERIFY(endRun());
        m_user->app().setSelection(Screen::Health);
        QVERIFY(m_user->waitForView(u"HealthScreen"_s));
        m_user->app().setSelection(Screen::GigRun);
        QVERIFY(m_user->waitForView(u"GigRunScreen"_s));
        QTRY_COMPARE(m_user->texts().count(u"Waiting"_s), 8);
        QVERIFY(!isOn());
        QVERIFY(!m_user->shows(u"Set sheet"_s));
    }

private:
    bool open() { return m_user->openOn(Screen::GigRun, u"GigRunScreen"_s); }

    /// Two copies, two uneven tracks, and one that is nowhere.
    void addTypicalLibrary()
    {
        const QByteArrayList copy = {textRecord("tart", u"A"), textRecord("tsng", u"Song"),
                                     textRecord("tlen", u"40:00"), textRecord("tbpm", u"124.9")};
        m_user->addTrack(u"large.mp3"_s, copy, preparedFile() + QByteArray(100, 'a'));
        m_user->addTrack(u"small.mp3"_s, copy, preparedFile());
        const QString loud =
            m_user->addTrack(u"loud.mp3"_s, preparedFields(u"Loud"_s), preparedFile("3.0"));
        m_user->addTrack(u"quiet.mp3"_s, preparedFields(u"Quiet"_s), preparedFile("-3.0"));
        m_user->addMissingTrack(u"gone.mp3"_s);
        writeHomeCrate(m_user->root(), u"Set"_s, {loud});
    }

    QQuickItem *runButton() const { return m_user->button(u"Run gig prep"_s); }
    QQuickItem *fixes() const
    {
        return itemNamed(m_user->content(), u"Apply safe fixes"_s, QAccessible::CheckBox);
    }
    bool isOn() const { return QAccessible::queryAccessibleInterface(fixes())->state().checked; }
    /// The colour of the circle at the head of a step.
    QString circleOf(const QString &step) const
    {
        QQuickItem *row = itemNamed(m_user->content(), step, QAccessible::ListItem);
        for (QQuickItem *item : row ? row->findChildren<QQuickItem *>() : QList<QQuickItem *>()) {
            if (item->property("radius").toReal() == 11)
                return item->property("color").value<QColor>().name();
        }
        return {};
    }
    /// Ends the pauses until the run is over.
    bool endRun()
    {
        while (m_pauses->endNext()) {
        }
        return runButton() && m_user->waitForPicture();
    }

    std::unique_ptr<ScreenFixture> m_user;
    std::unique_ptr<platform::ScopedPauses> m_pauses;
};

QTEST_MAIN(GigRunScreenTest)
#include "gig_run_screen_test.moc"
