#include "screens/track_id/track_id_actions.h"

#include "support/command_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class TrackIdActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tagsWhatIsReadyByOneCommandForEachGenre()
    {
        CommandFixture user;
        addTagged(user, u"Ash"_s, u"Pop"_s);
        addTagged(user, u"Bay"_s, u"House"_s);
        addUntagged(user, u"Ash"_s, u"1"_s);
        addUntagged(user, u"Bay"_s, u"2"_s);
        addUntagged(user, u"Ash"_s, u"3"_s);
        addUntagged(user, u"Cole"_s, u"4"_s);
        AppState &app = user.start();
        const QSignalSpy told(&app, &AppState::libraryChanged);
        TrackIdActions::tagAllReady(app);
        QCOMPARE(user.toasts(), QStringList({u"Tagged 2 tracks as Pop [Undo]"_s,
                                             u"Tagged 1 track as House [Undo]"_s}));
        QCOMPARE(user.snapshotCount(), 2);
        QCOMPARE(told.count(), 1);
        QCOMPARE(genres(user),
                 QStringList({u"Pop"_s, u"House"_s, u"Pop"_s, u"House"_s, u"Pop"_s, u""_s}));
        user.restart();
        QCOMPARE(genres(user),
                 QStringList({u"Pop"_s, u"House"_s, u"Pop"_s, u"House"_s, u"Pop"_s, u""_s}));
    }

    void callsNothingWhereNothingIsReady()
    {
        CommandFixture user;
        addUntagged(user, u"Ash"_s, u"1"_s);
        TrackIdActions::tagAllReady(user.launch(AppState::Environment::Ignored));
        QVERIFY(!user.app().toast());
        TrackIdActions::tagAllReady(user.start());
        QVERIFY(user.toasts().isEmpty());
        QCOMPARE(user.snapshotCount(), 0);
    }

private:
    static void addTagged(CommandFixture &user, const QString &artist, const QString &genre)
    {
        user.addTrack(artist + u".mp3"_s, {textRecord("tart", artist), textRecord("tgen", genre)});
    }
    static void addUntagged(CommandFixture &user, const QString &artist, const QString &title)
    {
        user.addTrack(title + u".mp3"_s, {textRecord("tart", artist), textRecord("tsng", title)});
    }
    static QStringList genres(CommandFixture &user)
    {
        QStringList all;
        for (const ScannedTrack &scanned : user.app().result()->tracks)
            all << scanned.track.genre;
        return all;
    }
};

QTEST_GUILESS_MAIN(TrackIdActionsTest)
#include "track_id_actions_test.moc"
