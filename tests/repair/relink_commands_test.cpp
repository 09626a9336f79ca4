#include "support/command_fixture.h"
#include "support/running_program.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class RelinkCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void relinkPointsTheRecordAtTheNewFile()
    {
        const QByteArrayList fields = {textRecord("tsng", u"Song"), flagRecord("bmis", true),
                                       record("zzzz", "kept")};
        const QString old = m_user->addMissingTrack(u"old.mp3"_s, fields);
        const QString moved = m_user->writeAudio(u"moved/new.mp3"_s, "twelve bytes");
        AppState &app = m_user->start();
        const QUuid id = m_user->track(0).id();
        app.relink(m_user->track(0), QUrl::fromLocalFile(u'/' + moved));

        QCOMPARE(m_user->toasts(), QStringList{u"Relinked old.mp3 [Undo]"_s});
        QCOMPARE(m_user->database(),
                 databaseVersion() +
                     trackRecord({textRecord("pfil", moved), textRecord("tsng", u"Song"),
                                  flagRecord("bmis", false), record("zzzz", "kept")}));
        const ScannedTrack &track = m_user->track(0);
        QCOMPARE(track.id(), id);
        QCOMPARE(track.track.relativePath, moved);
        QVERIFY(track.existsOnDisk && !track.track.flaggedMissing);
        QCOMPARE(track.onDiskSizeBytes, 12u);
        QVERIFY(!track.tagsRead);
        QCOMPARE(app.derived()->missing, 0);
        const ChangeEntry entry = m_user->newestEntry();
        QCOMPARE(
            chosen(entry),
            u"relink | old.mp3 | Relinked to new.mp3 — cues and grids carried over | %1 | %2 | 30"_s
                .arg(old, moved));
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: relink old.mp3"_s);
        QCOMPARE(entry.snapshotId, app.snapshots().first().id);
        QVERIFY(!entry.holdingId);
    }

    void relinkTellsTheViewsOnce()
    {
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        QSignalSpy library(&app, &AppState::libraryChanged);
        QSignalSpy safety(&app, &AppState::safetyChanged);
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        QCOMPARE(library.size(), 1);
        QCOMPARE(safety.size(), 1);
    }

    void relinkTakesAPathThatLeadsNowhere()
    {
        m_user->addMissingTrack(u"old.mp3"_s, {numberRecord("tsiz", 0)});
        AppState &app = m_user->start();
        const quint64 size = m_user->track(0).onDiskSizeBytes;
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"nowhere.mp3"_s)));
        QVERIFY(m_user->track(0).existsOnDisk);
        QCOMPARE(m_user->track(0).onDiskSizeBytes, size);
    }

    void relinkOfATrackThatHasLeftTheResultStillWrites()
    {
        const QString old = m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        ScannedTrack stranger = m_user->track(0);
        stranger.track.id = freshIdentity();
        app.relink(stranger, QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        QVERIFY(m_user->database().contains(utf16(u"new.mp3")));
        QCOMPARE(m_user->paths(), QStringList{old});
        QCOMPARE(m_user->newestEntry().kind, ChangeEntry::Kind::Relink);
    }

    void heldResultsOfOthersStayAsTheyWere()
    {
        const QString old = m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        const auto before = app.result();
        const auto figures = app.derived();
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        QCOMPARE(before->tracks[0].track.relativePath, old);
        QCOMPARE(figures->missing, 1);
        QCOMPARE(app.derived()->missing, 0);
    }

    void dropTakesTheRecordOut()
    {
        const QString gone = m_user->addMissingTrack(u"gone.mp3"_s);
        const QString kept = m_user->addTrack(u"kept.mp3"_s);
        AppState &app = m_user->start();
        const ScannedTrack track = m_user->track(0);
        app.dropFromLibrary(track);
        QCOMPARE(m_user->toasts(), QStringList{u"Removed dead entry for gone.mp3 [Undo]"_s});
        QCOMPARE(m_user->database(), databaseVersion() + trackRecord({textRecord("pfil", kept)}));
        QCOMPARE(m_user->paths(), QStringList{kept});
        QCOMPARE(
            chosen(m_user->newestEntry()),
            u"dedupe | gone.mp3 | Removed dead library entry (file was already missing) | %1 | "
            "(none) | 30"_s.arg(gone));
        QCOMPARE(app.snapshots().first().reason, u"Before: drop gone.mp3"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);

        app.dropFromLibrary(track);
        QCOMPARE(m_user->toasts().last(), u"That track is no longer in the database. [!]"_s);
        QCOMPARE(app.changeEntries().size(), 1);
        QCOMPARE(m_user->snapshotCount(), 2);
    }

    void dropLeavesAFileThatIsThereAndTheCratesAlone()
    {
        const QString path = m_user->addTrack(u"there.mp3"_s);
        const QByteArray crate = crateVersion() + crateEntry(path);
        const QString crateFile =
            m_user->root().write(u"home/Music/_Serato_/Subcrates/Set.crate"_s, crate);
        m_user->start().dropFromLibrary(m_user->track(0));
        QCOMPARE(contentOf(u'/' + path), QByteArray("not really audio"));
        QCOMPARE(contentOf(crateFile), crate);
    }

    void commandsAreSilentWithoutALibrary()
    {
        AppState &app = m_user->launch(AppState::Environment::Ignored);
        QSignalSpy toasts(&app, &AppState::toastRaised);
        app.relink({}, QUrl::fromLocalFile(u"/new.mp3"_s));
        app.dropFromLibrary({});
        QCOMPARE(toasts.size(), 0);
    }

    void commandsRefuseWhileSeratoIsKnownToRun()
    {
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        app.dropFromLibrary(m_user->track(0));
        QCOMPARE(m_user->toasts(),
                 (QStringList{u"Close Serato before relinking. [!]"_s,
                              u"Close Serato before editing the library. [!]"_s}));
        QCOMPARE(m_user->database(), database);
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    void commandsNoticeASeratoThatWasStartedSince()
    {
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        app.dropFromLibrary(m_user->track(0));
        const QString refusal = u"Serato is running — close it before making changes. [!]"_s;
        QCOMPARE(m_user->toasts(), (QStringList{refusal, refusal}));
        QCOMPARE(m_user->database(), database);
        QCOMPARE(m_user->snapshotCount(), 2);
        QVERIFY(app.changeEntries().isEmpty());
    }

    void aFailedSnapshotDoesNotStopTheWrite()
    {
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        m_user->preventSnapshots();
        app.dropFromLibrary(m_user->track(0));
        QCOMPARE(m_user->toasts(), QStringList{u"Removed dead entry for old.mp3 [Undo]"_s});
        QVERIFY(!m_user->newestEntry().snapshotId);
    }

    void aDatabaseThatHasGoneIsToldOf()
    {
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        QVERIFY(QFile::remove(m_user->databaseFile()));
        app.dropFromLibrary(m_user->track(0));
        QCOMPARE(
            m_user->toasts(),
            QStringList{
                u"The file “database V2” couldn't be opened: No such file or directory. [!]"_s});
        QCOMPARE(m_user->paths().size(), 1);
    }

private:
    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(RelinkCommandsTest)
#include "relink_commands_test.moc"
