#include "screens/loudness/loudness_presenter.h"
#include "support/gain_files.h"
#include "support/running_program.h"
#include "support/screen_fixture.h"
#include "support/screen_look.h"
#include "support/test_files.h"

#include <QGuiApplication>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString accent = u"#ffec3013"_s;
const QString accent2 = u"#ffe15b47"_s;
const QString good = u"#ff2f7d55"_s;
const QString warn = u"#ffb07d10"_s;
const QString ink = u"#ff201e1d"_s;
const QString inkSoft = u"#9e201e1d"_s;
const QString neutral500 = u"#ff9b9797"_s;
const QString controlRule = u"#2e201e1d"_s;

const QString subtitle = u"Even out levels across the library so nothing jumps in the mix. Gain is "
                         "written as a tag — your files are never re-encoded."_s;
const QString mayWrite = u"Safe to make changes — every fix takes a snapshot first and is "
                         "reversible for 30 days."_s;
const QString levelAll = u"Level all 3"_s;

} // namespace

/// The Loudness screen in the window, over real libraries on disk.
class LoudnessScreenTest : public QObject
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
        LoudnessPresenter presenter(m_user->app());
        QVERIFY(m_user->isEmptyView(Screen::Loudness, &presenter));
    }

    void showsThatNothingIsAnalysed()
    {
        m_user->addTrack(u"a.mp3"_s);
        QVERIFY(open());
        QCOMPARE(textsOf(m_user->view()),
                 QStringList({u"Loudness"_s, subtitle, mayWrite, u"0"_s, u"Analysed"_s, u"0.0 dB"_s,
                              u"Avg autogain"_s, u"0"_s, u"Off by ≥1.5 dB"_s,
                              u"No loudness data yet. Analyse tracks in Serato, then rescan."_s}));
        QCOMPARE(figuresOf(m_user->view()),
                 QStringList({u"0 "_s + ink, u"0.0 dB "_s + ink, u"0 "_s + good}));
        QVERIFY(buttonsOf(m_user->view()).isEmpty());
    }

    void showsHowFarEachTrackStands()
    {
        addTypical();
        QVERIFY(open());
        QCOMPARE(textsOf(m_user->view()),
                 QStringList({u"Loudness"_s,
                              subtitle,
                              mayWrite,
                              u"4"_s,
                              u"Analysed"_s,
                              u"-1.0 dB"_s,
                              u"Avg autogain"_s,
                              u"3"_s,
                              u"Off by ≥1.5 dB"_s,
                              u"3 tracks stand out from the library average"_s,
                              u"Deviation from library average"_s,
                              u"Ash — Loud"_s,
                              u"Loud.mp3"_s,
                              u"+6.0 dB"_s,
                              u"Ash — Soft"_s,
                              u"Soft.mp3"_s,
                              u"-4.0 dB"_s,
                              u"Ash — Tagged"_s,
                              u"Tagged.mp3"_s,
                              u"-3.0 dB"_s,
                              u"tagged"_s,
                              u"Ash — Near"_s,
                              u"Near.mp3"_s,
                              u"+1.0 dB"_s}));
        QCOMPARE(buttonsOf(m_user->view()),
                 QStringList({levelAll, u"Level -6.0"_s, u"Level +4.0"_s, u"Level -1.0"_s}));
    }

    void paintsFiguresByWhetherTheyStandOut()
    {
        addTypical();
        QVERIFY(open());
        QCOMPARE(
            figuresOf(m_user->view()),
            QStringList({u"4 "_s + ink, u"-1.0 dB "_s + ink, u"3 "_s + warn, u"+6.0 dB "_s + warn,
                         u"-4.0 dB "_s + warn, u"-3.0 dB "_s + warn, u"+1.0 dB "_s + inkSoft}));
        QCOMPARE(colorOf(m_user->text(u"tagged"_s)), good);
        QCOMPARE(colorOf(iconOf(m_user->view(), u"speaker.wave.3.fill"_s)), accent);
        QVERIFY(iconOf(m_user->button(levelAll), u"slider.horizontal.3"_s));
    }

    void aRowHasColumnsOfFixedWidthAroundItsBar()
    {
        addTypical();
        QVERIFY(open());
        const QQuickItem *line = itemsOfType(m_user->view(), "TrackLine").value(0);
        const QQuickItem *bar = itemsOfType(m_user->view(), "DeviationBar").value(0);
        const QQuickItem *figure =
            itemNamed(m_user->view(), u"+6.0 dB"_s, QAccessible::StaticText)->parentItem();
        const QQuickItem *action = m_user->button(u"Level -6.0"_s)->parentItem();
        QCOMPARE(line->width(), 300.0);
        QCOMPARE(bar->height(), 8.0);
        QCOMPARE(figure->width(), 64.0);
        QCOMPARE(action->width(), 84.0);
        QCOMPARE(itemsOfType(m_user->view(), "Rule").size(), 3); // between four rows
        const qreal gap = placeOf(bar).left() - placeOf(line).right();
        QVERIFY(gap > 0);
        QCOMPARE(placeOf(figure).left() - placeOf(bar).right(), gap);
        QCOMPARE(placeOf(action).left() - placeOf(figure).right(), gap);
        const qreal before = bar->width();
        m_user->window()->resize(1400, 720);
        QTRY_COMPARE(bar->width(), before + 280);
    }

    void aBarIsAsLongAsItsDeviation_data()
    {
        QTest::addColumn<double>("deviation");
        QTest::addColumn<double>("left"); // of half the width, from the middle
        QTest::addColumn<double>("right");
        QTest::addColumn<QString>("color");
        QTest::newRow("none") << 0.0 << 0.0 << 0.0 << accent2;
        QTest::newRow("louder") << 1.5 << 0.0 << 0.25 << accent2;
        QTest::newRow("softer") << -3.0 << -0.5 << 0.0 << neutral500;
        QTest::newRow("as loud as the scale goes") << 6.0 << 0.0 << 1.0 << accent2;
        QTest::newRow("louder than the scale") << 9.0 << 0.0 << 1.0 << accent2;
        QTest::newRow("softer than the scale") << -9.0 << -1.0 << 0.0 << neutral500;
    }
    void aBarIsAsLongAsItsDeviation()
    {
        QFETCH(const double, deviation);
        QFETCH(const double, left);
        QFETCH(const double, right);
        addTypical();
        QVERIFY(open());
        QQuickItem *bar = itemsOfType(m_user->view(), "DeviationBar").value(0);
        bar->setProperty("deviation", deviation);
        const QList<QQuickItem *> parts = bar->childItems();
        const qreal half = bar->width() / 2;
        QVERIFY(half > 100);
        QCOMPARE(parts[0]->width(), 1.0);
        QCOMPARE(parts[0]->x() + 0.5, half);
        QCOMPARE(colorOf(parts[0]), controlRule);
        QCOMPARE(parts[1]->x(), half + left * half);
        QCOMPARE(parts[1]->width(), (right - left) * half);
        QCOMPARE(parts[1]->height(), 8.0);
        QCOMPARE(parts[1]->property("radius").toDouble(), 4.0);
        QTEST(colorOf(parts[1]), "color");
    }

    void levelsOneTrack_data() { everyWay(); }
    void levelsOneTrack()
    {
        QFETCH(const Way, way);
        addTypical();
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Level +4.0"_s), way));
        QTRY_VERIFY(!m_user->button(u"Level +4.0"_s));
        QVERIFY(contentOf(m_user->home(u"Soft.mp3"_s)).contains("4.00 dB"));
        QVERIFY(!contentOf(m_user->home(u"Loud.mp3"_s)).contains("6.00 dB"));
        QCOMPARE(m_user->app().toast()->message, u"Wrote gain tag for Soft.mp3"_s);
        QCOMPARE(textsOf(m_user->view()).count(u"tagged"_s), 2);
    }

    void levelsEveryOutlierATaggedOneToo_data() { everyWay(); }
    void levelsEveryOutlierATaggedOneToo()
    {
        QFETCH(const Way, way);
        addTypical();
        QVERIFY(open());
        QVERIFY(press(m_user->button(levelAll), way));
        QTRY_COMPARE(buttonsOf(m_user->view()), QStringList({levelAll, u"Level -1.0"_s}));
        QVERIFY(contentOf(m_user->home(u"Loud.mp3"_s)).contains("-6.00 dB"));
        QVERIFY(contentOf(m_user->home(u"Soft.mp3"_s)).contains("4.00 dB"));
        QVERIFY(contentOf(m_user->home(u"Tagged.mp3"_s)).contains("3.00 dB"));
        QVERIFY(!contentOf(m_user->home(u"Near.mp3"_s)).contains("1.00 dB"));
        QCOMPARE(m_user->app().toast()->message, u"Levelled 3 tracks — tags only"_s);
    }

    void theKeyboardGoesOnToTheNextRowThatCanBeLevelled()
    {
        addTypical();
        QVERIFY(open());
        QVERIFY(pressByKey(m_user->button(u"Level +4.0"_s), Qt::Key_Return));
        QTRY_COMPARE(focused(), u"Level -1.0"_s);
        QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
        QTest::keyClick(m_user->window(), Qt::Key_Up);
        QCOMPARE(focused(), u"Level -6.0"_s);
    }

    void isBusyWhileItLevels()
    {
        addTypical();
        QVERIFY(open());
        for (const QString &name : {u"Level -6.0"_s, levelAll}) {
            QQuickItem *button = m_user->button(name);
            QVERIFY(pressByPointer(button));
            QVERIFY(button->property("down").toBool());
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            QVERIFY(m_user->button(u"Level +4.0"_s));
            QTRY_VERIFY(!QGuiApplication::overrideCursor());
            QVERIFY(!button->property("down").toBool());
        }
        QTRY_VERIFY(!m_user->button(u"Level +4.0"_s));
    }

    void showsFiftyRowsOfAll()
    {
        for (int i = 0; i < 26; ++i) {
            addAnalysed(u"loud%1"_s.arg(i), analysedFile("-2"));
            addAnalysed(u"soft%1"_s.arg(i), analysedFile("2"));
        }
        QVERIFY(open());
        QVERIFY(pressByKey(m_user->button(u"Level all 52"_s), Qt::Key_Tab));
        QTest::keyClick(m_user->window(), Qt::Key_End);
        QTRY_VERIFY(m_user->shows(u"Ash — soft24"_s));
        QVERIFY(!m_user->shows(u"Ash — loud25"_s));
        QVERIFY(pressByPointer(m_user->window()->activeFocusItem()));
        QTRY_COMPARE(m_user->app().toast()->message, u"Wrote gain tag for soft24.mp3"_s);
    }

    void offersTheBatchAloneWhileSeratoRuns()
    {
        addTypical();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        QVERIFY(open());
        QVERIFY(m_user->shows(u"Serato is running. Changes are blocked until you close it — "
                              "reading stays available."_s));
        for (const QString &name : {u"Level -6.0"_s, u"Level +4.0"_s, u"Level -1.0"_s}) {
            QQuickItem *button = m_user->button(name);
            QVERIFY(!button->isEnabled());
            pressByPointer(button);
            pressByScreenReader(button);
            QVERIFY(!pressByKey(button, Qt::Key_Return));
        }
        QVERIFY(pressByPointer(m_user->button(levelAll)));
        QTRY_VERIFY(m_user->app().toast());
        QCOMPARE(m_user->app().toast()->message, u"Close Serato first."_s);
        QVERIFY(m_user->app().snapshots().isEmpty());
        QVERIFY(!contentOf(m_user->home(u"Loud.mp3"_s)).contains(" dB"));
    }

    void saysWhichFileTakesNoTag()
    {
        addTypical();
        QVERIFY(open());
        QVERIFY(QFile::remove(m_user->home(u"Loud.mp3"_s)));
        QVERIFY(pressByPointer(m_user->button(u"Level -6.0"_s)));
        QTRY_VERIFY(m_user->app().toast());
        QVERIFY(!m_user->app().toast()->reversible);
        QVERIFY(m_user->button(u"Level -6.0"_s));
    }

    void theSidebarLeadsHere()
    {
        m_user->writeHomeDatabase({});
        m_user->openAndScan();
        QVERIFY(pressByScreenReader(m_user->button(u"Loudness"_s)));
        QVERIFY(m_user->waitForView(u"LoudnessScreen"_s));
    }

private:
    bool open() { return m_user->openOn(Screen::Loudness, u"LoudnessScreen"_s); }
    /// The mean is -1.
    void addTypical()
    {
        addAnalysed(u"Near"_s, analysedFile("-2"));
        addAnalysed(u"Loud"_s, analysedFile("-7"));
        addAnalysed(u"Tagged"_s, levelledFile("2"));
        addAnalysed(u"Soft"_s, analysedFile("3"));
    }
    void addAnalysed(const QString &title, const QByteArray &file)
    {
        m_user->addTrack(title + u".mp3"_s, {textRecord("tart", u"Ash"), textRecord("tsng", title)},
                         file);
    }
    QString focused() const { return accessibleName(m_user->window()->activeFocusItem()); }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(LoudnessScreenTest)
#include "loudness_screen_test.moc"
