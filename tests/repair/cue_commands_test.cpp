#include "foundation/dates.h"
#include "support/command_fixture.h"
#include "support/running_program.h"
#include "support/tag_builder.h"
#include "tags/geob_files.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class CueCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void lostCuesComeBackIntoTheFile()
    {
        const QString path = m_user->addTrack(u"a.mp3"_s, {}, markedFile());
        AppState &app = startAndLose({path});
        QCOMPARE(app.cueLosses().size(), 1);
        const auto loss = app.cueLosses().first();
        app.restoreCues(loss);
        QCOMPARE(m_user->toasts(),
                 QStringList{u"Restored hot cues and beat grid to a.mp3 [Undo]"_s});
        QCOMPARE(SeratoGEOB::captureCueFrames(u'/' + path).size(), 2);
        QVERIFY(contentOf(u'/' + path).endsWith("music"));
        QVERIFY(m_user->track(0).hasMarkers && m_user->track(0).hasBeatGrid);
        QVERIFY(app.cueLosses().isEmpty());
        QCOMPARE(
            chosen(m_user->newestEntry()),
            u"restoreCues | a.mp3 | Restored hot cues and beat grid from %1 | (none) | (none) | "
            "30"_s.arg(dateForPeople(loss.capturedAt)));
        QCOMPARE(app.snapshots().first().reason, u"Before: restore cues · a.mp3"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
    }

    void anUndoLeavesRestoredCuesInTheFile()
    {
        const QString path = m_user->addTrack(u"a.mp3"_s, {}, markedFile());
        AppState &app = startAndLose({path});
        app.restoreCues(app.cueLosses().first());
        m_user->forgetToasts();
        app.undo(m_user->newestEntry());
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: a.mp3"_s});
        QCOMPARE(SeratoGEOB::captureCueFrames(u'/' + path).size(), 2);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void allLossesAreRestoredEachWithItsSnapshotAndEntry()
    {
        QStringList paths;
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
            paths << m_user->addTrack(name, {}, markedFile());
        AppState &app = startAndLose(paths);
        app.restoreAllCues();
        QCOMPARE(m_user->toasts(),
                 (QStringList{u"Restored hot cues and beat grid to a.mp3 [Undo]"_s,
                              u"Restored hot cues and beat grid to b.mp3 [Undo]"_s,
                              u"Restored hot cues and beat grid to c.mp3 [Undo]"_s}));
        QCOMPARE(m_user->snapshotCount(), 3);
        QCOMPARE(app.changeEntries().size(), 3);
        QVERIFY(app.cueLosses().isEmpty());
    }

    void aFileThatCannotTakeThemIsToldOfAndNotLogged()
    {
        const QString path = m_user->addTrack(u"a.mp3"_s, {}, markedFile());
        AppState &app = startAndLose({path});
        QVERIFY(QFile::remove(u'/' + path));
        app.restoreCues(app.cueLosses().first());
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY(m_user->toasts().first().endsWith(u" [!]"_s));
        QCOMPARE(m_user->snapshotCount(), 1);
        QVERIFY(app.changeEntries().isEmpty());
        QCOMPARE(app.cueLosses().size(), 1);
    }

    void aTrackThatTheVaultDoesNotKnowEndsSilently()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        CueVault::Loss loss;
        loss.track = m_user->track(0);
        app.restoreCues(loss);
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    void restoringRefusesWhileSeratoRuns()
    {
        const QString path = m_user->addTrack(u"a.mp3"_s, {}, markedFile());
        AppState &app = startAndLose({path});
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.restoreCues(app.cueLosses().first());
        QCOMPARE(m_user->toasts(), QStringList{u"Close Serato before restoring cues. [!]"_s});
        QVERIFY(SeratoGEOB::captureCueFrames(u'/' + path).isEmpty());
    }

    void nothingIsLostWithoutALibrary()
    {
        AppState &app = m_user->launch(AppState::Environment::Ignored);
        QVERIFY(app.cueLosses().isEmpty());
        QSignalSpy toasts(&app, &AppState::toastRaised);
        app.restoreCues({});
        app.restoreAllCues();
        QCOMPARE(toasts.size(), 0);
    }

private:
    static QByteArray markedFile()
    {
        return TagBuilder()
            .object("Serato Markers2")
            .object("Serato BeatGrid")
            .audio("music")
            .file();
    }
    /// Scans, takes the cues out of the files and scans again.
    AppState &startAndLose(const QStringList &paths)
    {
        m_user->start();
        for (const QString &path : paths) {
            if (!SeratoGEOB::stripCueFrames(u'/' + path))
                qFatal("can't take the cues out");
        }
        return m_user->restart();
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(CueCommandsTest)
#include "cue_commands_test.moc"
