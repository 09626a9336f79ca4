#include "support/screen_fixture.h"
#include "support/tag_builder.h"
#include "support/test_files.h"
#include "tags/geob_files.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray markedFile()
{
    return TagBuilder().object("Serato Markers2").object("Serato BeatGrid").audio("music").file();
}

} // namespace

/// The screen of cues and grids in the window, over real libraries on disk.
class CuesScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsThatNothingIsLost()
    {
        m_user->addTrack(u"a.mp3"_s, {}, markedFile());
        QVERIFY(open());
        QCOMPARE(
            m_user
                ->textsFrom(u"Tarnwick keeps a copy of every track's hot cues and beat grid. If "
                            "any go missing, put them back exactly."_s)
                .sliced(1),
            QStringList(
                {u"Safe to make changes — every fix takes a snapshot first and is reversible for "
                 "30 days."_s,
                 u"1"_s, u"Tracks protected"_s, u"1"_s, u"With a beat grid"_s, u"0"_s,
                 u"Losses found"_s, u"Losses since last capture"_s, u"No cue or grid losses."_s,
                 u"Every protected track still has the cues and grid the vault captured. If Serato "
                 "ever drops them — after a re-analyze, a re-import, or a file swap — they'll show "
                 "up here, ready to restore."_s,
                 u"Snapshots"_s,
                 u"No snapshots yet. Take one before any change — it's the whole safety net."_s}));
    }

    void restoresOneLossAndThenAll_data() { everyWay(); }
    void restoresOneLossAndThenAll()
    {
        QFETCH(const Way, way);
        QVERIFY(openWithLosses({u"a.mp3"_s, u"b.mp3"_s}));
        QVERIFY(m_user->button(u"Restore all 2"_s));
        QVERIFY(press(m_user->button(u"Restore"_s), way));
        QTRY_COMPARE(m_user->app().cueLosses().size(), 1);
        QVERIFY(SeratoGEOB::captureCueFrames(m_user->home(u"a.mp3"_s)).size() == 2);
        QTRY_VERIFY(m_user->button(u"Restore all 1"_s));
        QVERIFY(press(m_user->button(u"Restore all 1"_s), way));
        QTRY_VERIFY(m_user->shows(u"No cue or grid losses."_s));
        QVERIFY(SeratoGEOB::captureCueFrames(m_user->home(u"b.mp3"_s)).size() == 2);
        QTRY_VERIFY(m_user->shows(u"Before: restore cues · b.mp3"_s));
    }

private:
    bool open() { return m_user->openOn(Screen::Cues, u"CuesGridsScreen"_s); }
    bool openWithLosses(const QStringList &names)
    {
        for (const QString &name : names)
            m_user->addTrack(name, {}, markedFile());
        if (!open())
            return false;
        for (const QString &name : names) {
            if (!SeratoGEOB::stripCueFrames(m_user->home(name)))
                return false;
        }
        m_user->app().rescan();
        m_user->waitUntilIdle();
        m_user->app().setSelection(Screen::Cues);
        return m_user->waitForView(u"CuesGridsScreen"_s) && m_user->waitForPicture();
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(CuesScreenTest)
#include "cues_screen_test.moc"
