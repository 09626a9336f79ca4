#include "screens/health/health_presenter.h"

#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The Health screen in the window, over real libraries on disk.
class HealthScreenTest : public QObject
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
        HealthPresenter presenter(m_user->app());
        QVERIFY(m_user->isEmptyView(Screen::Health, &presenter));
    }

    void showsAnEmptyLibrary()
    {
        QVERIFY(m_user->openOn(Screen::Health, u"HealthScreen"_s));
        QCOMPARE(m_user
                     ->textsFrom(u"A quick triage of your library and the shortest path to a "
                                 "clean one."_s)
                     .sliced(1),
                 QStringList({u"0"_s,
                              u"Missing files"_s,
                              u"0"_s,
                              u"Duplicate groups"_s,
                              u"0"_s,
                              u"Untagged genre"_s,
                              u"~1 minutes"_s,
                              u"of cleanup to get to a clean library"_s,
                              u"Do this first"_s,
                              u"Nothing urgent. Your library is in good shape."_s,
                              u"Genres"_s,
                              u"0 tagged"_s,
                              u"Almost nothing is tagged with a genre yet."_s,
                              u"BPM range"_s,
                              u"0 analysed"_s,
                              u"< 90"_s,
                              u"90–105"_s,
                              u"105–120"_s,
                              u"120–130"_s,
                              u"130–145"_s,
                              u"145+"_s}));
    }

    void showsWhatIsWrongAndAProfile()
    {
        addTypicalLibrary();
        QVERIFY(m_user->openOn(Screen::Health, u"HealthScreen"_s));
        const QStringList triage = m_user->textsFrom(
            u"A quick triage of your library and the shortest path to a clean one."_s);
        QCOMPARE(triage.sliced(1, 6),
                 QStringList({u"1"_s, u"Missing files"_s, u"2"_s, u"Duplicate groups"_s, u"3"_s,
                              u"Untagged genre"_s}));
        const QStringList texts = m_user->textsFrom(u"Do this first"_s);
        QCOMPARE(texts.sliced(0, 4),
                 QStringList({u"Do this first"_s, u"1"_s, u"Relink 1 missing file"_s,
                              u"Serato can't find these on disk. Relinking keeps their cues and "
                              "grids."_s}));
        for (const auto &text :
             {u"Clear 2 duplicate copies"_s, u"Tag 3 tracks with no genre"_s,
              u"Analyse 5 tracks with no key"_s, u"House"_s, u"2 tagged"_s, u"1 analysed"_s})
            QVERIFY2(texts.contains(text), qPrintable(text));
        QVERIFY(!texts.contains(u"Nothing urgent. Your library is in good shape."_s));
    }

    void theArrowOfAStepLeadsToItsScreen_data() { everyWay(); }
    void theArrowOfAStepLeadsToItsScreen()
    {
        QFETCH(const Way, way);
        addTypicalLibrary();
        QVERIFY(m_user->openOn(Screen::Health, u"HealthScreen"_s));
        QVERIFY(press(m_user->button(u"Clear 2 duplicate copies"_s), way));
        QCOMPARE(m_user->app().selection(), Screen::Duplicates);
        QVERIFY(m_user->waitForView(u"DuplicatesScreen"_s));
    }

private:
    void addTypicalLibrary()
    {
        m_user->addMissingTrack(u"gone.mp3"_s, {textRecord("tbpm", u"128")});
        const QByteArrayList copy = {textRecord("tsng", u"Twice"), textRecord("tgen", u"House")};
        m_user->addTrack(u"a.mp3"_s, copy);
        m_user->addTrack(u"b.mp3"_s, copy);
        m_user->addTrack(u"c.mp3"_s, {textRecord("tsng", u"Again")});
        m_user->addTrack(u"d.mp3"_s, {textRecord("tsng", u"Again")});
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(HealthScreenTest)
#include "health_screen_test.moc"
