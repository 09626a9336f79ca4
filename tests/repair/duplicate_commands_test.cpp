#include "support/command_fixture.h"
#include "support/running_program.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class DuplicateCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void resolvingHoldsEveryLoser()
    {
        const QString best = addCopy(u"best.mp3"_s, 3000);
        const QString worse = addCopy(u"worse.mp3"_s, 2000);
        const QString worst = addCopy(u"worst.mp3"_s, 1000);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        QCOMPARE(group.members.size(), 3u);
        app.resolveDuplicates(group, group.members.front().id());

        QCOMPARE(m_user->toasts(),
                 QStringList{u"Kept 1, moved 2 to holding — 3 KB reclaimable [Undo]"_s});
        QCOMPARE(m_user->database(), databaseVersion() + copyRecord(best));
        QCOMPARE(m_user->paths(), QStringList{best});
        QVERIFY(QFile::exists(u'/' + best) && !QFile::exists(u'/' + worse) &&
                !QFile::exists(u'/' + worst));
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: keep 1, hold 2 of 3"_s);
        QCOMPARE(app.heldItems().size(), 2);
        QCOMPARE(app.changeEntries().size(), 2);
        for (const qsizetype i : {0, 1}) {
            const ChangeEntry entry = app.changeEntries().at(i);
            const QString path = u'/' + QStringList{worst, worse}.at(i);
            QCOMPARE(chosen(entry),
                     u"dedupe | %1 | Duplicate → holding (30 days). Best copy kept. | "
                     "%2 | (none) | 30"_s.arg(QFileInfo(path).fileName(), path));
            QCOMPARE(entry.snapshotId, app.snapshots().first().id);
            QCOMPARE(entry.holdingId, app.heldItems().at(i).id);
            QCOMPARE(app.heldItems().at(i).originalPath, path);
            QCOMPARE(app.heldItems().at(i).reason, u"Duplicate of Song"_s);
        }
        QVERIFY(app.derived()->duplicateGroups.empty());
    }

    void theKeeperNeedNotBeTheBest()
    {
        addCopy(u"best.mp3"_s, 3000);
        const QString worse = addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        app.resolveDuplicates(group, group.members.back().id());
        QCOMPARE(m_user->paths(), QStringList{worse});
        QCOMPARE(m_user->toasts(),
                 QStringList{u"Kept 1, moved 1 to holding — 3 KB reclaimable [Undo]"_s});
    }

    void aLoserWhoseFileIsGoneStaysAndTheOthersGo()
    {
        addCopy(u"best.mp3"_s, 3000);
        const QString gone = addCopy(u"gone.mp3"_s, 2000);
        addCopy(u"worst.mp3"_s, 1000);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        QVERIFY(QFile::remove(u'/' + gone));
        app.resolveDuplicates(group, group.members.front().id());
        QCOMPARE(m_user->toasts().size(), 2);
        QVERIFY2(m_user->toasts().first().contains(u"gone.mp3"_s) &&
                     m_user->toasts().first().endsWith(u" [!]"_s),
                 qPrintable(m_user->toasts().first()));
        QCOMPARE(m_user->toasts().last(),
                 u"Kept 1, moved 1 to holding — 1 KB reclaimable [Undo]"_s);
        QVERIFY(m_user->paths().contains(gone));
        QCOMPARE(app.changeEntries().size(), 1);
    }

    void whereNothingMovedThereIsNoWordOfSuccess()
    {
        addCopy(u"best.mp3"_s, 3000);
        const QString gone = addCopy(u"gone.mp3"_s, 2000);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        QVERIFY(QFile::remove(u'/' + gone));
        app.resolveDuplicates(group, group.members.front().id());
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY(m_user->toasts().first().endsWith(u" [!]"_s));
        QVERIFY(app.changeEntries().isEmpty());
    }

    /// The accepted loss: the file is held, its record stays, and no entry tells of it.
    void aRecordThatHasGoneLeavesItsFileHeldWithoutAnEntry()
    {
        addCopy(u"best.mp3"_s, 3000);
        const QString worse = addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        put(m_user->databaseFile(), databaseVersion());
        app.resolveDuplicates(group, group.members.front().id());
        QCOMPARE(m_user->toasts(), QStringList{u"That track is no longer in the database. [!]"_s});
        QCOMPARE(app.heldItems().size(), 1);
        QVERIFY(!QFile::exists(u'/' + worse));
        QVERIFY(m_user->paths().contains(worse));
        QVERIFY(app.changeEntries().isEmpty());
    }

    /// Two records of one file, by way of a link: the file is the keeper's.
    void theKeepersFileNeverMoves()
    {
        const QString file = addCopy(u"real/song.mp3"_s, 3000);
        QVERIFY(QFile::link(m_user->home(u"real"_s), m_user->home(u"linked"_s)));
        const QString linked = m_user->home(u"linked/song.mp3"_s).sliced(1);
        addRecordOfCopy(linked);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        app.resolveDuplicates(group, group.members.front().id());
        QVERIFY(QFile::exists(u'/' + file));
        QCOMPARE(m_user->paths().size(), 1);
        QCOMPARE(app.heldItems().size(), 0);
        QCOMPARE(app.changeEntries().size(), 1);
        QVERIFY(!m_user->newestEntry().holdingId);
        QVERIFY(m_user->toasts().isEmpty());
    }

    void anUnknownKeeperHoldsThemAll()
    {
        addCopy(u"best.mp3"_s, 3000);
        addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        app.resolveDuplicates(app.derived()->duplicateGroups.front(), freshIdentity());
        QCOMPARE(m_user->toasts(),
                 QStringList{u"Kept 1, moved 2 to holding — 5 KB reclaimable [Undo]"_s});
    }

    void aGroupOfTheKeeperAloneEndsSilently()
    {
        addCopy(u"best.mp3"_s, 3000);
        addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        DuplicateGroup group = app.derived()->duplicateGroups.front();
        group.members.pop_back();
        app.resolveDuplicates(group, group.members.front().id());
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    void resolvingRefusesWhileSeratoRuns()
    {
        addCopy(u"best.mp3"_s, 3000);
        const QString worse = addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.resolveDuplicates(group, group.members.front().id());
        QCOMPARE(m_user->toasts(), QStringList{u"Close Serato before removing duplicates. [!]"_s});
        QVERIFY(QFile::exists(u'/' + worse));
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    /// The accepted loss again: files move ahead of the look whether Serato runs.
    void aSeratoThatWasStartedSinceLeavesTheFileHeldAndTheRecordInPlace()
    {
        addCopy(u"best.mp3"_s, 3000);
        const QString worse = addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        const DuplicateGroup group = app.derived()->duplicateGroups.front();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.resolveDuplicates(group, group.members.front().id());
        QCOMPARE(m_user->toasts(),
                 QStringList{u"Serato is running — close it before making changes. [!]"_s});
        QCOMPARE(m_user->database(), database);
        QCOMPARE(app.holding().activeItems().size(), 1);
        QCOMPARE(app.holding().activeItems().first().originalPath, u'/' + worse);
        QVERIFY(app.changeEntries().isEmpty());
        QVERIFY(m_user->paths().contains(worse));
    }

    void aGroupThatIsNoneLeavesTheFiguresUntilTheRestart()
    {
        addCopy(u"best.mp3"_s, 3000);
        addCopy(u"worse.mp3"_s, 2000);
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        const QByteArray database = m_user->database();
        app.markNotDuplicate(app.derived()->duplicateGroups.front());
        QCOMPARE(m_user->toasts(), QStringList{u"Marked as not a duplicate"_s});
        QVERIFY(app.derived()->duplicateGroups.empty());
        QCOMPARE(app.ignoredDupeKeys(), QSet<QString>{u"artist|song"_s});
        QCOMPARE(m_user->database(), database);
        QCOMPARE(m_user->restart().derived()->duplicateGroups.size(), 1u);
    }

private:
    static QByteArray copyRecord(const QString &path)
    {
        return trackRecord(QByteArrayList{textRecord("pfil", path)} + fields());
    }
    static QByteArrayList fields()
    {
        return {textRecord("tsng", u"Song"), textRecord("tart", u"Artist")};
    }
    QString addCopy(const QString &name, qsizetype bytes)
    {
        return m_user->addTrack(name, fields(), QByteArray(bytes, 'a'));
    }
    void addRecordOfCopy(const QString &path)
    {
        m_user->addMissingTrack(path.sliced(m_user->home({}).size() - 1), fields());
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(DuplicateCommandsTest)
#include "duplicate_commands_test.moc"
