#include "platform/file_choice.h"
#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The screen of missing files in the window, over real libraries on disk.
class MissingScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsThatNothingIsMissing()
    {
        m_user->addTrack(u"a.mp3"_s);
        QVERIFY(open());
        QCOMPARE(m_user
                     ->textsFrom(u"Serato can't find these on disk. Relink them to their real "
                                 "location and their cues, grids and play counts come along."_s)
                     .sliced(1),
                 QStringList({u"Safe to make changes — every fix takes a snapshot first and is "
                              "reversible for 30 days."_s,
                              u"Nothing missing — every track resolves to a file on disk."_s}));
    }

    void showsWhereAFileWasLastSeen()
    {
        m_user->addMissingTrack(u"Music/ebb.mp3"_s,
                                {textRecord("tart", u"Ash"), textRecord("tsng", u"Ebb")});
        QVERIFY(open());
        QCOMPARE(m_user->textsFrom(u"Broken links"_s),
                 QStringList({u"Broken links"_s, u"Ash — Ebb"_s, u"ebb.mp3"_s,
                              u"Last seen: "_s + m_user->home(u"Music/ebb.mp3"_s)}));
    }

    void findsAFileAndRelinksIt_data() { everyWay(); }
    void findsAFileAndRelinksIt()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"Music/ebb.mp3"_s, {numberRecord("ufsb", 4)});
        m_user->writeAudio(u"Moved/ebb.mp3"_s, "1234");
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Find it"_s), way));
        QTRY_VERIFY(m_user->button(u"Hide"_s));
        QTRY_VERIFY(m_user->button(u"Relink"_s));
        QVERIFY(m_user->shows(u"100%"_s));
        QVERIFY(m_user->waitForPicture());
        QVERIFY(press(m_user->button(u"Relink"_s), way));
        QTRY_VERIFY(m_user->shows(u"Nothing missing — every track resolves to a file on disk."_s));
        QCOMPARE(m_user->app().result()->tracks.front().track.absolutePath(),
                 m_user->home(u"Moved/ebb.mp3"_s));
    }

    void saysThatNothingWasFoundAndHidesThePanel()
    {
        m_user->addMissingTrack(u"Music/ebb.mp3"_s);
        QVERIFY(open());
        QVERIFY(pressByPointer(m_user->button(u"Find it"_s)));
        QTRY_VERIFY(m_user->shows(
            u"No candidates found on the indexed drives. Use Browse… to point at the file."_s));
        QVERIFY(pressByPointer(m_user->button(u"Hide"_s)));
        QTRY_VERIFY(m_user->button(u"Find it"_s));
        QVERIFY(!m_user->shows(
            u"No candidates found on the indexed drives. Use Browse… to point at the file."_s));
    }

    void asksForTheFile_data() { everyWay(); }
    void asksForTheFile()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"Music/ebb.mp3"_s);
        const QString there = u'/' + m_user->writeAudio(u"Elsewhere/tide.mp3"_s);
        QVERIFY(open());
        const platform::ScopedFileDialog dialog(
            [&](const platform::FileQuestion &, const platform::FileChosen &chosen) {
                chosen(there);
            });
        QVERIFY(press(m_user->button(u"Browse…"_s), way));
        QTRY_COMPARE(m_user->app().result()->tracks.front().track.absolutePath(), there);
    }

    void dropsATrack_data() { everyWay(); }
    void dropsATrack()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"Music/ebb.mp3"_s);
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Drop"_s), way));
        QTRY_COMPARE(m_user->app().result()->total(), 0);
        QTRY_VERIFY(m_user->shows(u"Nothing missing — every track resolves to a file on disk."_s));
    }

    void tabGoesThroughTheControlsOfARow()
    {
        m_user->addMissingTrack(u"Music/a.mp3"_s);
        m_user->addMissingTrack(u"Music/b.mp3"_s);
        QVERIFY(open());
        QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
        QStringList reached = {focused()};
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(m_user->window(), Qt::Key_Tab);
            reached += focused();
        }
        QCOMPARE(reached, QStringList({u"Find it"_s, u"Browse…"_s, u"Drop"_s, u"Find it"_s,
                                       u"Browse…"_s, u"Drop"_s}));
    }

private:
    bool open() { return m_user->openOn(Screen::Missing, u"MissingFilesScreen"_s); }
    QString focused() const { return accessibleName(m_user->window()->activeFocusItem()); }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(MissingScreenTest)
#include "missing_screen_test.moc"
