#include "platform/fault_gate.h"
#include "safety/store.h"
#include "support/command_fixture.h"
#include "support/running_program.h"

#include <QThread>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

VersionGroup groupOf(const QString &base, const std::vector<ScannedTrack> &tracks)
{
    VersionGroup group{.id = {}, .base = base, .members = {}};
    for (const ScannedTrack &track : tracks)
        group.members.push_back({track, u"Original"_s});
    return group;
}

QStringList namesOf(const QList<LoadedCrate> &crates)
{
    QStringList names;
    for (const LoadedCrate &crate : crates)
        names << crate.name;
    return names;
}

} // namespace

class CrateCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    // Archiving

    void archivingFilesAllCutsButTheKeeper()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s, u"c"_s});
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        app.archiveVersions(groupOf(u"Adele — Hello"_s, app.result()->tracks),
                            m_user->track(1).id());
        QCOMPARE(m_user->toasts(), QStringList{u"Archived 2 cuts of Adele — Hello [Undo]"_s});
        QCOMPARE(crateFile(u"Archive"_s), crateOf({paths[0], paths[2]}));
        QCOMPARE(app.changeEntries().size(), 1);
        QCOMPARE(
            chosen(m_user->newestEntry()),
            u"archive | Adele — Hello | Filed 2 alternate cuts into the Archive crate (kept in "
            "library) | (none) | (none) | 30"_s);
        QVERIFY(!m_user->newestEntry().holdingId);
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: archive 2 cuts of Adele — Hello"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
        QCOMPARE(m_user->database(), database);
        QCOMPARE(app.result()->total(), 3);
        QVERIFY(app.heldItems().isEmpty());
    }

    void archivingDoesNotReadTheCratesAgain()
    {
        addTracks({u"a"_s, u"b"_s});
        AppState &app = m_user->start();
        QSignalSpy crates(&app, &AppState::cratesChanged);
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        QCOMPARE(crates.size(), 0);
        QVERIFY(app.crates().isEmpty());
        m_user->restart();
        QCOMPARE(namesOf(m_user->app().crates()), QStringList{u"Archive"_s});
    }

    void archivingWhatIsArchivedAlreadyAddsNothing()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        writeCrate(u"Archive"_s, {paths[1]});
        AppState &app = m_user->start();
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        QCOMPARE(m_user->toasts(), QStringList{u"Archived 0 cuts of Song [Undo]"_s});
        QCOMPARE(m_user->newestEntry().detail,
                 u"Filed 0 alternate cuts into the Archive crate (kept in library)"_s);
        QCOMPARE(crateFile(u"Archive"_s), crateOf({paths[1]}));
        QCOMPARE(app.snapshots().first().reason, u"Before: archive 1 cuts of Song"_s);
    }

    void archivingOneCutSpeaksOfOne()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        writeCrate(u"Archive"_s, {u"old.mp3"_s});
        AppState &app = m_user->start();
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(1).id());
        QCOMPARE(m_user->toasts(), QStringList{u"Archived 1 cut of Song [Undo]"_s});
        QCOMPARE(crateFile(u"Archive"_s), crateOf({u"old.mp3"_s, paths[0]}));
    }

    void archivingNothingIsSilent()
    {
        addTracks({u"a"_s});
        AppState &app = m_user->start();
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        app.archiveVersions(groupOf(u"Song"_s, {}), QUuid());
        expectNothingDone();
    }

    void archivingThatFailsLogsNothing()
    {
        addTracks({u"a"_s, u"b"_s});
        m_user->root().write(u"home/Music/_Serato_/Subcrates"_s, "a file");
        AppState &app = m_user->start();
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        QCOMPARE(m_user->toasts(),
                 QStringList{u"The file “Subcrates” couldn't be created: File exists. [!]"_s});
        QVERIFY(app.changeEntries().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 1);
    }

    // Merging

    void mergingAddsToTheLargerCrateAndHoldsTheOther()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"Big"_s, {u"1"_s, u"2"_s, u"3"_s});
        writeCrate(u"Small"_s, {u"2"_s, u"/4"_s});
        const QByteArray small = crateFile(u"Small"_s);
        AppState &app = m_user->start();
        app.mergeCrates(overlapOf(u"Big"_s, u"Small"_s));
        QCOMPARE(m_user->toasts(), QStringList{u"Merged Small into Big [Undo]"_s});
        QCOMPARE(subcrates(), QStringList{u"Big.crate"_s});
        QCOMPARE(crateFile(u"Big"_s), crateOf({u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
        QCOMPARE(app.heldItems().size(), 1);
        const HeldItem held = app.heldItems().first();
        QCOMPARE(held.originalPath, subcratePath(u"Small"_s));
        QCOMPARE(held.reason, u"Merged into Big"_s);
        QCOMPARE(held.heldPath, Store::holding() + u'/' + held.id + u"/Small.crate"_s);
        QCOMPARE(contentOf(held.heldPath), small);
        QCOMPARE(app.holding().totalBytes(), quint64(small.size()));
        QCOMPARE(app.changeEntries().size(), 1);
        QCOMPARE(
            chosen(m_user->newestEntry()),
            u"archive | Small | Merged 2 tracks into Big; folded crate held 30 days | (none) | "
            "(none) | 30"_s);
        QCOMPARE(m_user->newestEntry().holdingId, held.id);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
        QCOMPARE(app.snapshots().first().reason, u"Before: merge Small → Big"_s);
    }

    void mergingKeepsTheFirstOfTwoCratesOfOneSize()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s, u"2"_s});
        writeCrate(u"B"_s, {u"1"_s, u"3"_s});
        AppState &app = m_user->start();
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        QCOMPARE(crateFile(u"A"_s), crateOf({u"1"_s, u"2"_s, u"3"_s}));
        QCOMPARE(subcrates(), QStringList{u"A.crate"_s});
    }

    void mergingTakesTheSecondWhereItIsLarger()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s});
        writeCrate(u"B"_s, {u"1"_s, u"3"_s});
        m_user->start().mergeCrates(overlapOf(u"A"_s, u"B"_s));
        QCOMPARE(subcrates(), QStringList{u"B.crate"_s});
        QCOMPARE(m_user->toasts(), QStringList{u"Merged A into B [Undo]"_s});
    }

    void mergedCratesAreReadAgainAheadOfTheToast()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s, u"2"_s});
        writeCrate(u"B"_s, {u"1"_s, u"3"_s});
        AppState &app = m_user->start();
        QStringList told;
        connect(&app, &AppState::cratesChanged, &app,
                [&] { told << u"crates "_s + namesOf(app.crates()).join(u' '); });
        connect(&app, &AppState::safetyChanged, &app, [&] {
            told << u"%1 entries, %2 snapshots, %3 held"_s.arg(app.changeEntries().size())
                        .arg(app.snapshots().size())
                        .arg(app.heldItems().size());
        });
        connect(&app, &AppState::toastRaised, &app, [&] { told << u"toast"_s; });
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        QCOMPARE(told,
                 QStringList({u"crates A"_s, u"1 entries, 1 snapshots, 1 held"_s, u"toast"_s}));
        QCOMPARE(app.crates().first().paths, QStringList({u"1"_s, u"2"_s, u"3"_s}));
        QVERIFY(app.hygiene()->overlaps.empty());
    }

    void mergingDropsColumnsAndSortOrderOfTheCrateThatStays()
    {
        m_user->addTrack(u"a.mp3"_s);
        const QByteArray columns =
            record("osrt", textRecord("tvcn", u"bpm") + flagRecord("brev", false)) +
            record("ovct", textRecord("tvcn", u"song"));
        m_user->root().write(crateName(u"A"_s), textRecord("vrsn", u"81.0/Serato") + columns +
                                                    crateEntry(u"/1") + crateEntry(u"2"));
        const QByteArray folded = crateVersion() + columns + crateEntry(u"1");
        m_user->root().write(crateName(u"B"_s), folded);
        AppState &app = m_user->start();
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        // The entry stored with a slash and the same path without one are two entries to the file.
        QCOMPARE(crateFile(u"A"_s), crateOf({u"/1"_s, u"2"_s, u"1"_s}));
        QCOMPARE(contentOf(app.heldItems().first().heldPath), folded);
    }

    void mergingCratesWithNamesAsSeratoWritesThem_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::newRow("nested") << u"Gigs 2021%%Friday%%Peak"_s << u"Gigs 2021%%Saturday"_s;
        QTest::newRow("nested under its own name") << u"House"_s << u"House%%House"_s;
        QTest::newRow("letter case alone") << u"HOUSE"_s << u"house"_s;
        QTest::newRow("beyond the basic plane") << u"🔥 Peak 🔥"_s << u"👩‍🎤"_s;
        QTest::newRow("composed and decomposed") << u"Caf\u00e9"_s << u"Cafe\u0301"_s;
        QTest::newRow("what a URL would read otherwise") << u"100% #1?"_s << u"a%20b&c;d"_s;
        QTest::newRow("blanks at the ends") << u" a"_s << u"a "_s;
        QTest::newRow("points") << u".hidden"_s << u"v1.2.crate"_s;
        QTest::newRow("place holders of the texts") << u"%1"_s << u"%2 %n %L1"_s;
        QTest::newRow("quotes and line breaks") << u"12\" \\ 'mix'"_s << u"two\nlines"_s;
        // With ".crate", the point ahead and ".twtmp" behind it, 255 bytes.
        QTest::newRow("as long as a name may be") << QString(242, u'n') << QString(248, u'm');
    }
    void mergingCratesWithNamesAsSeratoWritesThem()
    {
        QFETCH(const QString, a);
        QFETCH(const QString, b);
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(a, {u"1"_s, u"2"_s, u"3"_s});
        writeCrate(b, {u"3"_s, u"4"_s});
        AppState &app = m_user->start();
        app.mergeCrates(overlapOf(a, b));
        QCOMPARE(m_user->toasts(), QStringList{u"Merged "_s + b + u" into "_s + a + u" [Undo]"_s});
        QCOMPARE(crateFile(a), crateOf({u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
        QCOMPARE(subcrates(), QStringList{a + u".crate"_s});
        QCOMPARE(namesOf(app.crates()), QStringList{a});
        QCOMPARE(m_user->newestEntry().target, b);
        QCOMPARE(contentOf(app.heldItems().first().heldPath), crateOf({u"3"_s, u"4"_s}));
    }

    void mergingMakesNoLibraryWhereADriveHasGone()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s, u"2"_s});
        writeCrate(u"B"_s, {u"1"_s});
        AppState &app = m_user->start();
        const QString music = m_user->home(u"Music"_s);
        QVERIFY(QDir().rename(music, m_user->home(u"Elsewhere"_s)));
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        QCOMPARE(m_user->toasts(),
                 QStringList{u"The library isn't at “"_s + music + u"/_Serato_” any more. [!]"_s});
        QVERIFY(!QFileInfo::exists(music));
        QVERIFY(app.changeEntries().isEmpty());
        QVERIFY(app.heldItems().isEmpty());
    }

    void aNameTooLongForItsTemporaryFailsAndLosesNothing()
    {
        m_user->addTrack(u"a.mp3"_s);
        const QString name(249, u'n');
        writeCrate(name, {u"1"_s, u"2"_s});
        writeCrate(u"B"_s, {u"1"_s});
        const auto before = library();
        AppState &app = m_user->start();
        app.mergeCrates(overlapOf(name, u"B"_s));
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY2(m_user->toasts().first().endsWith(u"File name too long. [!]"_s),
                 qPrintable(m_user->toasts().first()));
        QCOMPARE(library()[u"Subcrates/B.crate"_s], before[u"Subcrates/B.crate"_s]);
        QVERIFY(app.changeEntries().isEmpty());
        QVERIFY(app.heldItems().isEmpty());
    }

    void mergingThatCannotAddTouchesNothing()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s, u"2"_s});
        writeCrate(u"B"_s, {u"1"_s, u"3"_s});
        AppState &app = m_user->start();
        const auto before = library();
        {
            const platform::ScopedFaults faults(
                [](platform::FileOperation operation, const QString &path) {
                    return operation == platform::FileOperation::Write &&
                                   path.contains(u"/Subcrates/"_s) && path.endsWith(u".twtmp"_s) &&
                                   path.contains(u"/_Serato_/"_s)
                               ? ENOSPC
                               : 0;
                });
            app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        }
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY2(m_user->toasts().first().contains(u"No space left on device"_s) &&
                     m_user->toasts().first().endsWith(u" [!]"_s),
                 qPrintable(m_user->toasts().first()));
        QCOMPARE(library(), before);
        QVERIFY(app.changeEntries().isEmpty());
        QVERIFY(app.heldItems().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 1);
    }

    /// The tracks stand in both crates then, and what is on screen is not read again.
    void mergingThatCannotHoldLogsNothing()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s, u"2"_s});
        writeCrate(u"B"_s, {u"1"_s, u"3"_s});
        AppState &app = m_user->start();
        QSignalSpy crates(&app, &AppState::cratesChanged);
        const CrateHygiene::Overlap overlap = overlapOf(u"A"_s, u"B"_s);
        QVERIFY(QFile::remove(subcratePath(u"B"_s)));
        app.mergeCrates(overlap);
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY2(m_user->toasts().first().endsWith(u"No such file or directory. [!]"_s),
                 qPrintable(m_user->toasts().first()));
        QCOMPARE(crateFile(u"A"_s), crateOf({u"1"_s, u"2"_s, u"3"_s}));
        QVERIFY(app.changeEntries().isEmpty());
        QVERIFY(app.heldItems().isEmpty());
        QCOMPARE(crates.size(), 0);
        QCOMPARE(app.crates().size(), 2);
        QCOMPARE(m_user->snapshotCount(), 1);
    }

    void aHeldCrateGoesAfterItsDaysAtALaunch()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"A"_s, {u"1"_s});
        writeCrate(u"B"_s, {u"1"_s});
        AppState &app = m_user->start();
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        const QString held = app.heldItems().first().heldPath;
        const QDateTime merged = app.heldItems().first().date;
        {
            const platform::ScopedClock clock(merged.addDays(29));
            QCOMPARE(m_user->launch().holding().count(), 1);
            QVERIFY(QFile::exists(held));
        }
        const platform::ScopedClock clock(merged.addDays(30).addSecs(1));
        QCOMPARE(m_user->launch().holding().count(), 0);
        QVERIFY(!QFile::exists(held));
    }

    // Orphans

    void filingOrphansAddsThemToUnsorted()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s, u"c"_s});
        writeCrate(u"Mix"_s, {paths[2]});
        AppState &app = m_user->start();
        QCOMPARE(app.hygiene()->orphanCount, 2);
        app.fileOrphans({paths[1], paths[0]});
        QCOMPARE(m_user->toasts(), QStringList{u"Filed 2 orphans into Unsorted [Undo]"_s});
        QCOMPARE(crateFile(u"Unsorted"_s), crateOf({paths[1], paths[0]}));
        QCOMPARE(chosen(m_user->newestEntry()),
                 u"archive | Unsorted | Filed 2 orphan tracks into the Unsorted crate | (none) | "
                 "(none) | 30"_s);
        QVERIFY(!m_user->newestEntry().holdingId);
        QCOMPARE(app.snapshots().first().reason, u"Before: file 2 orphans → Unsorted"_s);
        QCOMPARE(m_user->newestEntry().snapshotId, app.snapshots().first().id);
        QCOMPARE(namesOf(app.crates()), QStringList({u"Mix"_s, u"Unsorted"_s}));
        QCOMPARE(app.hygiene()->orphanCount, 0);
    }

    void filedOrphansCountAsOftenAsTheyWereAdded()
    {
        m_user->addTrack(u"a.mp3"_s);
        writeCrate(u"Unsorted"_s, {u"1"_s});
        AppState &app = m_user->start();
        app.fileOrphans({u"1"_s, u"/2"_s, u"2"_s});
        QCOMPARE(m_user->toasts(), QStringList{u"Filed 1 orphans into Unsorted [Undo]"_s});
        QCOMPARE(m_user->newestEntry().detail, u"Filed 1 orphan track into the Unsorted crate"_s);
        QCOMPARE(app.snapshots().first().reason, u"Before: file 3 orphans → Unsorted"_s);
        QCOMPARE(crateFile(u"Unsorted"_s), crateOf({u"1"_s, u"2"_s}));
    }

    void filingNoOrphansIsSilent()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->start().fileOrphans({});
        expectNothingDone();
    }

    void filingThatFailsLogsNothing()
    {
        m_user->addTrack(u"a.mp3"_s);
        m_user->root().makeFolder(crateName(u"Unsorted"_s));
        AppState &app = m_user->start();
        QSignalSpy crates(&app, &AppState::cratesChanged);
        app.fileOrphans({u"1"_s});
        QCOMPARE(m_user->toasts().size(), 1);
        QVERIFY2(m_user->toasts().first().endsWith(u" [!]"_s),
                 qPrintable(m_user->toasts().first()));
        QVERIFY(app.changeEntries().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 1);
        QCOMPARE(crates.size(), 0);
    }

    // Genres

    void unifyingSetsTheCanonTrackByTrack()
    {
        const QString a = m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"house")});
        const QString b = m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", u"House")});
        const QString c = m_user->addMissingTrack(u"c.mp3"_s, {textRecord("tgen", u" House")});
        const QString d = m_user->addTrack(u"d.mp3"_s, {textRecord("tgen", u"Techno")});
        AppState &app = m_user->start();
        QCOMPARE(app.hygiene()->genreVariants.size(), size_t(1));
        app.unifyGenre(houseVariant());
        QCOMPARE(m_user->toasts(), QStringList{u"Unified 2 tracks to House [Undo]"_s});
        const auto track = [](const QString &path, QStringView genre) {
            return trackRecord({textRecord("pfil", path), textRecord("tgen", genre)});
        };
        QCOMPARE(m_user->database(), databaseVersion() + track(a, u"House") + track(b, u"House") +
                                         track(c, u"House") + track(d, u"Techno"));
        QCOMPARE(app.changeEntries().size(), 2);
        QCOMPARE(chosen(app.changeEntries()[1]),
                 u"tag | a.mp3 | Genre unified to House | house | House | 30"_s);
        QCOMPARE(chosen(app.changeEntries()[0]),
                 u"tag | c.mp3 | Genre unified to House |  House | House | 30"_s);
        QCOMPARE(app.snapshots().size(), 1);
        QCOMPARE(app.snapshots().first().reason, u"Before: unify genre → House"_s);
        for (const ChangeEntry &entry : app.changeEntries()) {
            QCOMPARE(entry.snapshotId, app.snapshots().first().id);
            QVERIFY(!entry.holdingId);
        }
        QCOMPARE(m_user->track(0).track.genre, u"House"_s);
        QCOMPARE(m_user->track(2).track.genre, u"House"_s);
        QCOMPARE(m_user->track(3).track.genre, u"Techno"_s);
        QVERIFY(app.hygiene()->genreVariants.empty());
    }

    void unifyingGoesOnBehindATrackThatFails()
    {
        const QString a = m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"house")});
        const QString b = m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", u"house")});
        AppState &app = m_user->start();
        const QByteArray second =
            trackRecord({textRecord("pfil", b), textRecord("tgen", u"house")});
        m_user->writeHomeDatabase({second}); // Serato has dropped the first meanwhile
        app.unifyGenre(houseVariant());
        QCOMPARE(m_user->toasts(), QStringList({u"That track is no longer in the database. [!]"_s,
                                                u"Unified 1 track to House [Undo]"_s}));
        QCOMPARE(app.changeEntries().size(), 1);
        QCOMPARE(m_user->track(0).track.genre, u"house"_s);
        QCOMPARE(m_user->track(1).track.genre, u"House"_s);
    }

    void unifyingWhatIsUnifiedIsSilent()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"House")});
        m_user->addTrack(u"b.mp3"_s);
        m_user->start().unifyGenre(houseVariant());
        expectNothingDone();
    }

    void unifyingAsksAgainForEachTrackWhetherSeratoRuns()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"house")});
        m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", u"house")});
        AppState &app = m_user->start();
        const QByteArray database = m_user->database();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.unifyGenre(houseVariant());
        const QString refusal = u"Serato is running — close it before making changes. [!]"_s;
        QCOMPARE(m_user->toasts(),
                 QStringList({refusal, refusal, u"Unified 0 tracks to House [Undo]"_s}));
        QCOMPARE(m_user->database(), database);
        QVERIFY(app.changeEntries().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 1);
    }

    void aUnifiedBatchTellsTheViewsOnce()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"house")});
        m_user->addTrack(u"b.mp3"_s, {textRecord("tgen", u"house")});
        AppState &app = m_user->start();
        QSignalSpy changes(&app, &AppState::libraryChanged);
        app.unifyGenre(houseVariant());
        QCOMPARE(changes.size(), 1);
    }

    // All four

    void commandsGoOnWithoutASnapshot()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        writeCrate(u"A"_s, {u"1"_s});
        writeCrate(u"B"_s, {u"1"_s});
        AppState &app = m_user->start();
        QDir(Store::snapshots()).removeRecursively();
        m_user->root().write(u"data/Tarnwick/Snapshots"_s, "no folder");
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        app.fileOrphans({paths[0]});
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        QCOMPARE(m_user->toasts(), QStringList({u"Archived 1 cut of Song [Undo]"_s,
                                                u"Filed 1 orphans into Unsorted [Undo]"_s,
                                                u"Merged B into A [Undo]"_s}));
        QCOMPARE(app.changeEntries().size(), 3);
        for (const ChangeEntry &entry : app.changeEntries())
            QVERIFY(!entry.snapshotId);
    }

    void commandsWithoutALibrary()
    {
        AppState &app = m_user->launch(AppState::Environment::Ignored);
        QStringList toasts;
        connect(&app, &AppState::toastRaised, &app,
                [&](const Toast &toast) { toasts << toast.message; });
        app.archiveVersions(groupOf(u"Song"_s, {ScannedTrack()}), QUuid());
        QVERIFY(toasts.isEmpty());
        app.mergeCrates({});
        app.fileOrphans({});
        app.unifyGenre({});
        QCOMPARE(toasts, QStringList(3, u"Close Serato first."_s));
    }

    void commandsRefuseWhileSeratoIsKnownToRun()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        writeCrate(u"A"_s, {u"1"_s});
        writeCrate(u"B"_s, {u"1"_s});
        AppState &app = m_user->start();
        const auto before = library();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.refreshEnvironment();
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        app.mergeCrates(overlapOf(u"A"_s, u"B"_s));
        app.fileOrphans({paths[0]});
        app.unifyGenre(houseVariant());
        const QString first = u"Close Serato first. [!]"_s;
        QCOMPARE(m_user->toasts(),
                 QStringList({u"Close Serato before writing crates. [!]"_s, first, first, first}));
        QCOMPARE(library(), before);
        QCOMPARE(m_user->snapshotCount(), 0);
        QVERIFY(app.changeEntries().isEmpty());
    }

    /// Only the last look counts for crates; the database alone is looked after more closely.
    void crateFilesDoNotAskAgainWhetherSeratoRuns()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        AppState &app = m_user->start();
        const RunningProgram serato(u"Serato DJ Pro"_s);
        app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        app.fileOrphans({paths[0]});
        QCOMPARE(subcrates(), QStringList({u"Archive.crate"_s, u"Unsorted.crate"_s}));
    }

    /// What a scan has read of the crates by then is out of date.
    void cratesWrittenDuringAScanAreThereAtItsEnd()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        AppState &app = m_user->start();
        // The report that ends a scan comes ahead of its result.
        bool archived = false;
        connect(&app, &AppState::progressReported, &app, [&](const ScanProgress &progress) {
            if (progress.phase != u"Scoring…"_s || archived)
                return;
            archived = true;
            QThread::msleep(200); // the crates have been read, and the result is on its way
            app.archiveVersions(groupOf(u"Song"_s, app.result()->tracks), m_user->track(0).id());
        });
        app.rescan();
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(archived);
        QCOMPARE(namesOf(app.crates()), QStringList{u"Archive"_s});
    }

    /// What is worked out behind a scan tells of the crates of that moment.
    void cratesWrittenBehindAScanAreInTheHygiene()
    {
        const QStringList paths = addTracks({u"a"_s, u"b"_s});
        AppState &app = m_user->start();
        connect(&app, &AppState::scanFinished, &app, [&] { app.fileOrphans(paths); });
        app.rescan();
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(m_user->toasts(), QStringList{u"Filed 2 orphans into Unsorted [Undo]"_s});
        QCOMPARE(app.hygiene()->orphanCount, 0);
    }

private:
    QStringList addTracks(const QStringList &names)
    {
        QStringList paths;
        for (const QString &name : names)
            paths << m_user->addTrack(name + u".mp3"_s);
        return paths;
    }

    static QString crateName(const QString &name)
    {
        return u"home/Music/_Serato_/Subcrates/"_s + name + u".crate"_s;
    }
    QString subcratePath(const QString &name) const { return m_user->root().path(crateName(name)); }
    static QByteArray crateOf(const QStringList &entries)
    {
        QByteArray bytes = crateVersion();
        for (const QString &entry : entries)
            bytes += crateEntry(entry);
        return bytes;
    }
    void writeCrate(const QString &name, const QStringList &entries) const
    {
        m_user->root().write(crateName(name), crateOf(entries));
    }
    QByteArray crateFile(const QString &name) const { return contentOf(subcratePath(name)); }
    QStringList subcrates() const { return namesIn(m_user->home(u"Music/_Serato_/Subcrates"_s)); }
    QMap<QString, QByteArray> library() const { return treeOf(m_user->home(u"Music/_Serato_"_s)); }

    /// The two crates as they were read, the way the figures put them together.
    CrateHygiene::Overlap overlapOf(const QString &a, const QString &b) const
    {
        CrateHygiene::Overlap overlap;
        for (const LoadedCrate &crate : m_user->app().crates()) {
            if (crate.name == a)
                overlap.a = crate;
            if (crate.name == b)
                overlap.b = crate;
        }
        return overlap;
    }
    static CrateHygiene::GenreVariant houseVariant()
    {
        return {.id = {}, .canon = u"House"_s, .variants = {u" House"_s, u"House"_s, u"house"_s}};
    }
    void expectNothingDone() const
    {
        QCOMPARE(m_user->toasts(), QStringList());
        QCOMPARE(m_user->snapshotCount(), 0);
        QVERIFY(m_user->app().changeEntries().isEmpty());
        QVERIFY(subcrates().isEmpty());
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(CrateCommandsTest)
#include "crate_commands_test.moc"
