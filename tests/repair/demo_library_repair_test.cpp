// A library as a DJ's would be, repaired from end to end and taken back again: relinked, rid of
// duplicates, tagged, levelled, its lost cues put back; then everything is undone, and rolled back.

#include "repair/relink_candidates.h"
#include "screens/loudness/loudness_figures.h"
#include "screens/track_id/track_id_figures.h"
#include "support/app_fixture.h"
#include "support/test_files.h"
#include "tags/geob_files.h"
#include "tools/demo_library_run.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class DemoLibraryRepairTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingRepairedComesBack_data();
    void everythingRepairedComesBack();

private:
    AppState &app() { return m_user->app(); }
    QString music() const { return m_user->home(u"Music"_s); }
    QMap<QString, QByteArray> library() const
    {
        return contents(m_user->home(u"Music/_Serato_"_s));
    }
    QStringList audioFiles() const;
    Snapshot firstSnapshot();
    /// Ends the process and starts another, if the run is one over restarts.
    void mayRestart()
    {
        if (m_restarts)
            m_user->launchAndScan();
    }

    void stripSomeCues();
    void relinkTheMoved();
    void resolveAllDuplicates();
    void tagAllThatIsSure();
    void levelAllOutliers();
    void restoreAllCues();

    std::unique_ptr<AppFixture> m_user;
    bool m_restarts = false;
};

/// All files below the music folder but for the library's own.
QStringList DemoLibraryRepairTest::audioFiles() const
{
    QStringList files = contents(m_user->home({})).keys();
    files.removeIf([](const QString &file) { return file.startsWith(u"Music/_Serato_/"_s); });
    return files;
}

Snapshot DemoLibraryRepairTest::firstSnapshot()
{
    for (const Snapshot &snapshot : app().snapshots()) {
        if (snapshot.reason == u"As it began"_s)
            return snapshot;
    }
    qFatal("the first snapshot has gone");
}

void DemoLibraryRepairTest::stripSomeCues()
{
    int stripped = 0;
    for (const ScannedTrack &track : app().result()->tracks) {
        if (!track.existsOnDisk || !track.hasMarkers || stripped == 3)
            continue;
        QVERIFY(SeratoGEOB::stripCueFrames(track.track.absolutePath()));
        ++stripped;
    }
    QCOMPARE(stripped, 3);
}

void DemoLibraryRepairTest::relinkTheMoved()
{
    const int missing = app().derived()->missing;
    const auto tracks = app().result()->tracks;
    int relinked = 0;
    for (const ScannedTrack &track : tracks) {
        if (track.existsOnDisk)
            continue;
        const auto candidates = RepairEngine::relinkCandidates(track.track);
        if (candidates.isEmpty())
            continue;
        app().relink(track, candidates.first().url);
        ++relinked;
    }
    QVERIFY(relinked > 0);
    QCOMPARE(app().derived()->missing, missing - relinked);
}

void DemoLibraryRepairTest::resolveAllDuplicates()
{
    const auto derived = app().derived();
    QVERIFY(!derived->duplicateGroups.empty());
    for (const DuplicateGroup &group : derived->duplicateGroups)
        app().resolveDuplicates(group, group.members.front().id());
    QVERIFY(app().derived()->duplicateGroups.empty());
    QVERIFY(app().holding().count() > 0);
}

void DemoLibraryRepairTest::tagAllThatIsSure()
{
    const auto sure = TrackIdFigures::batches(*app().derived());
    QVERIFY(!sure.empty());
    for (const auto &batch : sure)
        app().setGenreBatch(batch.tracks, batch.genre);
    QVERIFY(TrackIdFigures::batches(*app().derived()).empty());
}

void DemoLibraryRepairTest::levelAllOutliers()
{
    const auto derived = app().derived();
    const auto items = LoudnessFigures::levelling(
        *derived, LoudnessFigures::outliers(LoudnessFigures::tracks(*derived)));
    QVERIFY(!items.empty());
    const auto entries = app().changeLog().entries().size();
    app().normalizeAllLoudness(items);
    QVERIFY(app().changeLog().entries().size() > entries);
}

void DemoLibraryRepairTest::restoreAllCues()
{
    // A track relinked to a file that the vault knows counts too, until the next scan.
    QVERIFY(app().cueLosses().size() >= 3);
    app().restoreAllCues();
    QVERIFY(app().cueLosses().isEmpty());
}

void DemoLibraryRepairTest::everythingRepairedComesBack_data()
{
    QTest::addColumn<bool>("restarts");
    QTest::newRow("in one process") << false;
    QTest::newRow("with a restart behind each step") << true;
}

void DemoLibraryRepairTest::everythingRepairedComesBack()
{
    QFETCH(const bool, restarts);
    m_restarts = restarts;
    m_user.reset(); // its folders must not be those of the next
    m_user = std::make_unique<AppFixture>();
    const Run run =
        demoLibrary({u"--tracks"_s, u"120"_s, u"--seed"_s, u"8"_s, u"--out"_s, m_user->home({})});
    QVERIFY2(run.status == 0, run.errors.constData());
    m_user->launchAndScan().takeSnapshot(u"As it began"_s);
    QVERIFY(m_user->waitUntilIdle());
    const auto libraryBefore = library();
    const QStringList filesBefore = audioFiles();
    QVERIFY(libraryBefore.size() > 2 && filesBefore.size() > 50);

    stripSomeCues();
    app().rescan();
    QVERIFY(m_user->waitUntilIdle());
    using Step = void (DemoLibraryRepairTest::*)();
    for (const Step step :
         {&DemoLibraryRepairTest::relinkTheMoved, &DemoLibraryRepairTest::resolveAllDuplicates,
          &DemoLibraryRepairTest::tagAllThatIsSure, &DemoLibraryRepairTest::levelAllOutliers,
          &DemoLibraryRepairTest::restoreAllCues}) {
        mayRestart();
        (this->*step)();
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(library() != libraryBefore && audioFiles() != filesBefore);

    mayRestart();
    app().undoEverything();
    QCOMPARE(app().changeLog().activeCount(), 0);
    QVERIFY(app().holding().activeItems().isEmpty());
    QCOMPARE(audioFiles(), filesBefore);

    mayRestart();
    app().restoreSnapshot(firstSnapshot());
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(std::holds_alternative<Ready>(app().phase()));
    QCOMPARE(library(), libraryBefore);
    QCOMPARE(audioFiles(), filesBefore);
}

QTEST_GUILESS_MAIN(DemoLibraryRepairTest)
#include "demo_library_repair_test.moc"
