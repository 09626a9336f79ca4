#include "platform/fault_gate.h"
#include "support/command_fixture.h"
#include "support/running_program.h"
#include "support/tag_builder.h"

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class TagCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void settingAGenreIsSilentAndLogged()
    {
        const QString path = m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"Haus")});
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s);
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(m_user->database(),
                 databaseVersion() +
                     trackRecord({textRecord("pfil", path), textRecord("tgen", u"House")}));
        QCOMPARE(m_user->track(0).track.genre, u"House"_s);
        QCOMPARE(chosen(m_user->newestEntry()),
                 u"tag | a.mp3 | Genre set to House | Haus | House | 30"_s);
        QCOMPARE(app.snapshots().first().reason, u"Before: tag a.mp3"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
    }

    void anEmptyGenreIsLoggedAsADash()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->start().setGenre(m_user->track(0), u"House"_s);
        QCOMPARE(m_user->newestEntry().before, u"—"_s);
    }

    void aReasonOfTheCallersOwnStandsInTheSnapshot()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s, u"Before: gig run"_s);
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: gig run"_s);
    }

    void aFailedSnapshotIsTriedOnceMoreUnderTheDefaultReason()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        int failures = 1;
        {
            const platform::ScopedFaults faults([&](platform::FileOperation, const QString &path) {
                return path.endsWith(u"meta.json"_s) && failures-- > 0 ? EIO : 0;
            });
            app.setGenre(m_user->track(0), u"House"_s, u"Before: gig run"_s);
        }
        QVERIFY(failures <= 0);
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: tag a.mp3"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
    }

    void aBatchTakesOneSnapshotAndLogsEachTrack()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", u"Pop")});
        AppState &app = m_user->start();
        app.setGenreBatch(app.result()->tracks, u"House"_s);
        QCOMPARE(m_user->toasts(), QStringList{u"Tagged 2 tracks as House [Undo]"_s});
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: tag 2 tracks · House"_s);
        QCOMPARE(app.changeEntries().size(), 2);
        QCOMPARE(chosen(app.changeEntries().at(1)),
                 u"tag | a.mp3 | Genre set to House | — | House | 30"_s);
        QCOMPARE(app.changeEntries().at(1).snapshotId, app.snapshots().first().id);
        QCOMPARE(app.derived()->withGenre, 2);
    }

    void aBatchTellsTheViewsOnce()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->addTrack(u"b.mp3"_s);
        AppState &app = m_user->start();
        QSignalSpy library(&app, &AppState::libraryChanged);
        QSignalSpy safety(&app, &AppState::safetyChanged);
        app.setGenreBatch(app.result()->tracks, u"House"_s);
        QCOMPARE(library.size(), 1);
        QCOMPARE(safety.size(), 1);
    }

    void aBatchGoesOnBehindATrackThatFails()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->addTrack(u"b.mp3"_s);
        AppState &app = m_user->start();
        auto tracks = app.result()->tracks;
        tracks[0].track.relativePath = u"no such"_s;
        app.setGenreBatch(tracks, u"House"_s);
        QCOMPARE(m_user->toasts(), (QStringList{u"That track is no longer in the database. [!]"_s,
                                                u"Tagged 1 track as House [Undo]"_s}));
        QCOMPARE(app.changeEntries().size(), 1);
        QVERIFY(m_user->track(0).track.genre.isEmpty());
        QCOMPARE(m_user->track(1).track.genre, u"House"_s);
    }

    void anEmptyBatchStillTakesASnapshot()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        app.setGenreBatch({}, u"House"_s);
        app.normalizeAllLoudness({});
        QCOMPARE(m_user->toasts(), (QStringList{u"Tagged 0 tracks as House [Undo]"_s,
                                                u"Levelled 0 tracks — tags only [Undo]"_s}));
        QCOMPARE(m_user->snapshotCount(), 2);
        QCOMPARE(m_user->database(), database);
    }

    void aGainGoesIntoTheTagAndLeavesTheAudio()
    {
        const QString path = m_user->addTrack(u"a.mp3"_s, {}, taggedFile());
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        app.normalizeLoudness(m_user->track(0), -2.5);
        QCOMPARE(m_user->toasts(), QStringList{u"Wrote gain tag for a.mp3 [Undo]"_s});
        QCOMPARE(contentOf(u'/' + path), TagBuilder()
                                             .frame("TIT2", zeros(1) + "Song")
                                             .userText("REPLAYGAIN_TRACK_GAIN", "-2.50 dB")
                                             .audio("music")
                                             .file());
        QVERIFY(m_user->track(0).hasReplayGain);
        QCOMPARE(chosen(m_user->newestEntry()),
                 u"gain | a.mp3 | Wrote ReplayGain -2.50 dB (tag only, no re-encode) | (none) | "
                 "(none) | 30"_s);
        QCOMPARE(app.snapshots().first().reason, u"Before: gain tag a.mp3"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
        QCOMPARE(m_user->database(), database);
    }

    void aBatchOfGainsGoesOnBehindAFileThatTakesNone()
    {
        m_user->addTrack(u"a.wav"_s, {}, "RIFF");
        m_user->addTrack(u"b.mp3"_s, {}, taggedFile());
        AppState &app = m_user->start();
        app.normalizeAllLoudness({{m_user->track(0), 1.0}, {m_user->track(1), 2.0}});
        QCOMPARE(m_user->toasts().size(), 2);
        QVERIFY(m_user->toasts().first().endsWith(u" [!]"_s));
        QCOMPARE(m_user->toasts().last(), u"Levelled 1 track — tags only [Undo]"_s);
        QCOMPARE(chosen(m_user->newestEntry()),
                 u"gain | b.mp3 | Wrote ReplayGain 2.00 dB (tag only) | (none) | (none) | 30"_s);
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: normalize 2 tracks"_s);
        QVERIFY(!m_user->track(0).hasReplayGain && m_user->track(1).hasReplayGain);
        QVERIFY(m_user->newestEntry().snapshotId.has_value());
    }

    void aGainThatCannotBeWrittenIsToldOfAndNotLogged()
    {
        m_user->addTrack(u"a.wav"_s, {}, "RIFF");
        AppState &app = m_user->start();
        app.normalizeLoudness(m_user->track(0), 1.0);
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY(m_user->toasts().first().endsWith(u" [!]"_s));
        QVERIFY(app.changeEntries().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 1);
    }

    void commandsWithoutALibrary()
    {
        AppState &app = m_user->launch(AppState::Environment::Ignored);
        QSignalSpy toasts(&app, &AppState::toastRaised);
        app.setGenre({}, u"House"_s);
        app.setGenreBatch({}, u"House"_s);
        app.normalizeLoudness({}, 1.0);
        QCOMPARE(toasts.size(), 0);
        app.normalizeAllLoudness({});
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(app.toast()->message, u"Close Serato first."_s);
        QVERIFY(!app.toast()->reversible);
    }

    void commandsRefuseWhileSeratoIsKnownToRun()
    {
        m_user->addTrack(u"a.mp3"_s, {}, taggedFile());
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.setGenre(m_user->track(0), u"House"_s);
        app.setGenreBatch(app.result()->tracks, u"House"_s);
        app.normalizeLoudness(m_user->track(0), 1.0);
        app.normalizeAllLoudness({{m_user->track(0), 1.0}});
        QCOMPARE(m_user->toasts(), (QStringList{u"Close Serato before tagging. [!]"_s,
                                                u"Close Serato before tagging. [!]"_s,
                                                u"Close Serato before writing gain tags. [!]"_s,
                                                u"Close Serato first. [!]"_s}));
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    /// Tags of files are no business of Serato's database: only the last look counts for them.
    void gainsDoNotAskAgainWhetherSeratoRuns()
    {
        m_user->addTrack(u"a.mp3"_s, {}, taggedFile());
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.normalizeLoudness(m_user->track(0), 1.0);
        app.setGenre(m_user->track(0), u"House"_s);
        QCOMPARE(m_user->toasts(),
                 (QStringList{u"Wrote gain tag for a.mp3 [Undo]"_s,
                              u"Serato is running — close it before making changes. [!]"_s}));
    }

private:
    static QByteArray taggedFile()
    {
        return TagBuilder().frame("TIT2", zeros(1) + "Song").audio("music").file();
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(TagCommandsTest)
#include "tag_commands_test.moc"
