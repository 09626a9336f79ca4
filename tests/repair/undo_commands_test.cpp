#include "platform/clock.h"
#include "platform/fault_gate.h"
#include "support/command_fixture.h"
#include "support/running_program.h"
#include "support/tag_builder.h"

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class UndoCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void aRelinkGoesBackToTheOldPath_data()
    {
        QTest::addColumn<bool>("oldFileIsBack");
        QTest::newRow("old file gone") << false;
        QTest::newRow("old file back") << true;
    }
    void aRelinkGoesBackToTheOldPath()
    {
        QFETCH(const bool, oldFileIsBack);
        const QString old = m_user->addMissingTrack(u"old.mp3"_s, {flagRecord("bmis", true)});
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        app.relink(m_user->track(0), QUrl::fromLocalFile(u'/' + m_user->writeAudio(u"new.mp3"_s)));
        QVERIFY(m_user->database() != database);
        if (oldFileIsBack)
            put(u'/' + old, "back");
        undoNewest();
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: old.mp3"_s});
        QCOMPARE(m_user->database(), database);
        QCOMPARE(m_user->track(0).track.relativePath, old);
        QVERIFY(m_user->track(0).track.flaggedMissing);
        QCOMPARE(m_user->track(0).existsOnDisk, oldFileIsBack);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void aRelinkWithoutItsPathsIsOnlyMarked()
    {
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        const QByteArray database = m_user->database();
        ChangeEntry entry = m_user->newestEntry();
        entry.before.reset();
        m_user->forgetToasts();
        app.undo(entry);
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: old.mp3"_s});
        QCOMPARE(m_user->database(), database);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void aHeldDuplicateComesBackWithItsRecord()
    {
        AppState &app = startWithCopies();
        const auto group = app.derived()->duplicateGroups.front();
        const QString loser = group.members.back().track.absolutePath();
        app.resolveDuplicates(group, group.members.front().id());
        QVERIFY(!QFile::exists(loser));
        undoNewest();
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: "_s + QFileInfo(loser).fileName()});
        QVERIFY(QFile::exists(loser));
        // Whole as it was, and behind all others.
        QCOMPARE(m_user->database(), databaseVersion() + copyRecord(u"two/best.mp3"_s) +
                                         copyRecord(u"one/worse.mp3"_s));
        const ScannedTrack &track = m_user->track(1);
        QCOMPARE(track.track.absolutePath(), loser);
        QCOMPARE(track.track.title, u"Song"_s);
        QVERIFY(track.existsOnDisk && !track.tagsRead);
        QVERIFY(m_user->newestEntry().reversed);
        QVERIFY(app.holding().activeItems().isEmpty());
        QCOMPARE(app.derived()->duplicateGroups.size(), 1u);
    }

    void aHeldDuplicateComesBackIntoAFolderThatHasGone()
    {
        AppState &app = startWithCopies();
        const auto group = app.derived()->duplicateGroups.front();
        const QString loser = group.members.back().track.absolutePath();
        app.resolveDuplicates(group, group.members.front().id());
        QVERIFY(QDir().rmdir(QFileInfo(loser).path()));
        undoNewest();
        QVERIFY(QFile::exists(loser));
    }

    void aNewFileInThePlaceKeepsTheHeldOneHeld()
    {
        AppState &app = startWithCopies();
        const auto group = app.derived()->duplicateGroups.front();
        const QString loser = group.members.back().track.absolutePath();
        app.resolveDuplicates(group, group.members.front().id());
        put(loser, "new");
        undoNewest();
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: "_s + QFileInfo(loser).fileName()});
        QCOMPARE(contentOf(loser), QByteArray("new"));
        QCOMPARE(app.holding().activeItems().size(), 1);
        QVERIFY(QFile::exists(app.holding().activeItems().first().heldPath));
        QCOMPARE(m_user->paths().size(), 2);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void withoutItsSnapshotADuplicateComesBackAsAFileAlone()
    {
        AppState &app = startWithCopies();
        m_user->preventSnapshots();
        const auto group = app.derived()->duplicateGroups.front();
        const QString loser = group.members.back().track.absolutePath();
        app.resolveDuplicates(group, group.members.front().id());
        undoNewest();
        QVERIFY(QFile::exists(loser));
        QCOMPARE(m_user->paths().size(), 1);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void aDroppedEntryComesBack()
    {
        const QString gone = m_user->addMissingTrack(u"gone.mp3"_s, {record("zzzz", "kept")});
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        app.dropFromLibrary(m_user->track(0));
        undoNewest();
        QCOMPARE(m_user->database(), database);
        QCOMPARE(m_user->paths(), QStringList{gone});
        QVERIFY(!m_user->track(0).existsOnDisk);
    }

    void aGenreComesBack_data()
    {
        QTest::addColumn<QByteArrayList>("fields");
        QTest::addColumn<QByteArrayList>("after");
        QTest::newRow("a genre") << QByteArrayList{textRecord("tgen", u"Haus")}
                                 << QByteArrayList{textRecord("tgen", u"Haus")};
        QTest::newRow("an empty genre")
            << QByteArrayList{} << QByteArrayList{textRecord("tgen", u"")};
    }
    void aGenreComesBack()
    {
        QFETCH(const QByteArrayList, fields);
        QFETCH(const QByteArrayList, after);
        const QString path = m_user->addTrack(u"a.mp3"_s, fields);
        AppState &app = m_user->start();
        const QString genre = m_user->track(0).track.genre;
        app.setGenre(m_user->track(0), u"House"_s);
        undoNewest();
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: a.mp3"_s});
        QCOMPARE(m_user->database(),
                 databaseVersion() + trackRecord(QByteArrayList{textRecord("pfil", path)} + after));
        QCOMPARE(m_user->track(0).track.genre, genre);
    }

    void ofTwoFilesOfOneNameTheFirstGetsTheGenre()
    {
        m_user->addTrack(u"one/a.mp3"_s, {textRecord("tgen", u"Pop")});
        m_user->addTrack(u"two/a.mp3"_s, {textRecord("tgen", u"Haus")});
        AppState &app = m_user->start();
        app.setGenre(m_user->track(1), u"House"_s);
        undoNewest();
        QCOMPARE(m_user->track(0).track.genre, u"Haus"_s);
        QCOMPARE(m_user->track(1).track.genre, u"House"_s);
    }

    void aGenreOfATrackThatHasGoneIsOnlyMarked()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s);
        const QByteArray database = m_user->database();
        ChangeEntry entry = m_user->newestEntry();
        entry.target = u"b.mp3"_s;
        m_user->forgetToasts();
        app.undo(entry);
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: b.mp3"_s});
        QCOMPARE(m_user->database(), database);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void aGainStaysAndItsEntryIsMarked()
    {
        const QString path =
            m_user->addTrack(u"a.mp3"_s, {}, TagBuilder().frame("TIT2", zeros(1) + "Song").file());
        AppState &app = m_user->start();
        app.normalizeLoudness(m_user->track(0), 1.0);
        const QByteArray file = contentOf(u'/' + path);
        undoNewest();
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: a.mp3"_s});
        QCOMPARE(contentOf(u'/' + path), file);
        QVERIFY(m_user->track(0).hasReplayGain);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void kindsThatNothingCanUndoAreOnlyMarked_data()
    {
        QTest::addColumn<ChangeEntry::Kind>("kind");
        QTest::newRow("snapshot") << ChangeEntry::Kind::Snapshot;
        QTest::newRow("rollback") << ChangeEntry::Kind::Rollback;
        QTest::newRow("archive") << ChangeEntry::Kind::Archive;
        QTest::newRow("cues") << ChangeEntry::Kind::RestoreCues;
        QTest::newRow("duplicate without a held file and a snapshot") << ChangeEntry::Kind::Dedupe;
    }
    void kindsThatNothingCanUndoAreOnlyMarked()
    {
        QFETCH(const ChangeEntry::Kind, kind);
        m_user->addTrack(u"a.mp3"_s);
        ChangeLog().append({.kind = kind, .target = u"a.mp3"_s, .detail = u"Done"_s});
        m_user->start();
        const auto home = treeOf(m_user->home({}));
        undoNewest();
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: a.mp3"_s});
        QVERIFY(m_user->newestEntry().reversed);
        QCOMPARE(treeOf(m_user->home({})), home);
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    /// The accepted loss: the file is back, its record isn't, and the entry is marked.
    void aRecordThatCannotBeWrittenBackIsPassedOver()
    {
        AppState &app = startWithCopies();
        const auto group = app.derived()->duplicateGroups.front();
        const QString loser = group.members.back().track.absolutePath();
        app.resolveDuplicates(group, group.members.front().id());
        const QByteArray database = m_user->database();
        {
            const platform::ScopedFaults faults(
                [](platform::FileOperation operation, const QString &path) {
                    return operation == platform::FileOperation::Rename &&
                                   path.endsWith(u"database V2.twtmp"_s)
                               ? EIO
                               : 0;
                });
            undoNewest();
        }
        QCOMPARE(m_user->toasts(), QStringList{u"Undone: "_s + QFileInfo(loser).fileName()});
        QCOMPARE(m_user->database(), database);
        QVERIFY(QFile::exists(loser));
        QCOMPARE(m_user->paths().size(), 2);
        QVERIFY(m_user->newestEntry().reversed);
    }

    void aFailedUndoIsNotMarked()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->addMissingTrack(u"old.mp3"_s);
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s);
        app.relink(m_user->track(1), QUrl::fromLocalFile(m_user->home(u"new.mp3"_s)));
        put(m_user->databaseFile(), databaseVersion());
        m_user->forgetToasts();
        for (const ChangeEntry &entry : app.changeEntries())
            app.undo(entry);
        const QString refusal = u"That track is no longer in the database. [!]"_s;
        QCOMPARE(m_user->toasts(), (QStringList{refusal, refusal}));
        for (const ChangeEntry &entry : app.changeEntries())
            QVERIFY(!entry.reversed);
        QCOMPARE(m_user->track(0).track.genre, u"House"_s);
    }

    void everythingReversibleIsUndoneNewestFirst()
    {
        m_user->addMissingTrack(u"a.mp3"_s);
        m_user->addTrack(u"b.mp3"_s);
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        // Only in the reverse order do these lead back.
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"c.mp3"_s)));
        app.relink(m_user->track(0), QUrl::fromLocalFile(m_user->home(u"d.mp3"_s)));
        m_user->forgetToasts();
        QSignalSpy library(&app, &AppState::libraryChanged);
        app.undoEverything();
        QCOMPARE(m_user->toasts(), (QStringList{u"Undone: c.mp3"_s, u"Undone: a.mp3"_s,
                                                u"Everything reversible has been undone."_s}));
        QCOMPARE(m_user->database().size(), database.size() + record("bmis", "x").size());
        QVERIFY(m_user->paths().contains(m_user->home(u"a.mp3"_s).sliced(1)));
        QCOMPARE(app.changeLog().activeCount(), 0);
        QCOMPARE(library.size(), 1);
        // What is undone is left alone the next time.
        m_user->forgetToasts();
        app.undoEverything();
        QCOMPARE(m_user->toasts(), QStringList{u"Everything reversible has been undone."_s});
    }

    void whatIsPastItsDaysIsLeftAlone()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s);
        const platform::ScopedClock later(platform::now().addDays(31));
        app.undoEverything();
        QCOMPARE(m_user->toasts(), QStringList{u"Everything reversible has been undone."_s});
        QCOMPARE(m_user->track(0).track.genre, u"House"_s);
    }

    void everythingIsSaidToBeUndoneWhileSeratoRuns()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s);
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.undoEverything();
        QCOMPARE(m_user->toasts(), (QStringList{u"Close Serato before undoing. [!]"_s,
                                                u"Everything reversible has been undone."_s}));
        QVERIFY(!m_user->newestEntry().reversed);
    }

    void nothingIsUndoneWithoutALibrary()
    {
        AppState &app = m_user->launch(AppState::Environment::Ignored);
        QSignalSpy toasts(&app, &AppState::toastRaised);
        app.undo({});
        app.restoreSnapshot({});
        QCOMPARE(toasts.size(), 0);
    }

    void aRollbackPutsTheLibraryBackAndScansIt()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"Haus")});
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        app.setGenre(m_user->track(0), u"House"_s);
        const Snapshot snapshot = app.snapshots().first();
        app.restoreSnapshot(snapshot);
        QCOMPARE(app.busy(), u"Rolling back…"_s);
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(!app.busy());
        QCOMPARE(m_user->database(), database);
        QCOMPARE(m_user->track(0).track.genre, u"Haus"_s);
        QCOMPARE(m_user->toasts(),
                 QStringList{u"Library rolled back to "_s + snapshot.shortDate()});
        const ChangeEntry entry = m_user->newestEntry();
        QCOMPARE(chosen(entry), u"rollback | %1 | Rolled back to %2 | (none) | (none) | 0"_s.arg(
                                    m_user->home(u"Music/_Serato_"_s), snapshot.shortDate()));
        QVERIFY(!entry.reversibleUntil && !entry.snapshotId);
        // Its own safety snapshot stands beside the first; the entry it wiped out stays as it was.
        QCOMPARE(m_user->snapshotCount(), 2);
        QVERIFY(!app.changeEntries().at(1).reversed);
    }

    void aRollbackRefusesWhileSeratoIsKnownToRun()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.restoreSnapshot({});
        QCOMPARE(m_user->toasts(), QStringList{u"Close Serato before rolling back. [!]"_s});
        QVERIFY(!app.busy());
    }

    void aRollbackNoticesASeratoThatWasStartedSince()
    {
        m_user->addTrack(u"a.mp3"_s);
        AppState &app = m_user->start();
        app.setGenre(m_user->track(0), u"House"_s);
        const QByteArray database = m_user->database();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.restoreSnapshot(app.snapshots().first());
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY(m_user->toasts().first().endsWith(u" [!]"_s));
        QCOMPARE(m_user->database(), database);
        QVERIFY(!app.busy());
        QCOMPARE(m_user->newestEntry().kind, ChangeEntry::Kind::Tag);
    }

private:
    static QByteArrayList fieldsOfCopies()
    {
        return {textRecord("tsng", u"Song"), textRecord("tart", u"Artist"), record("zzzz", "kept")};
    }
    QByteArray copyRecord(const QString &name) const
    {
        return trackRecord(QByteArrayList{textRecord("pfil", m_user->home(name).sliced(1))} +
                           fieldsOfCopies());
    }
    AppState &startWithCopies()
    {
        m_user->addTrack(u"one/worse.mp3"_s, fieldsOfCopies(), QByteArray(1000, 'a'));
        m_user->addTrack(u"two/best.mp3"_s, fieldsOfCopies(), QByteArray(2000, 'a'));
        return m_user->start();
    }
    void undoNewest()
    {
        m_user->forgetToasts();
        m_user->app().undo(m_user->newestEntry());
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(UndoCommandsTest)
#include "undo_commands_test.moc"
