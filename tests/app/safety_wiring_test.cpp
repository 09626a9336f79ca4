// What AppState makes of the stores that keep changes reversible: at launch, after a scan, and
// with a manual snapshot.

#include "app/app_state.h"

#include "safety/store.h"
#include "support/app_fixture.h"
#include "support/running_program.h"
#include "support/tag_builder.h"
#include "tags/geob_files.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray track(const QString &path)
{
    return trackRecord({textRecord("pfil", path), textRecord("tsng", path)});
}

QByteArray audioWithCues()
{
    return TagBuilder().object("Serato Markers2").object("Serato BeatGrid").audio("music").file();
}

QByteArray heldItem(const QString &id, const QString &expiresAt)
{
    return u"{\"id\":\"%1\",\"originalPath\":\"/music/%1.mp3\",\"heldPath\":\"%2/%1/%1.mp3\","
           "\"reason\":\"test\",\"date\":\"2020-01-01T00:00:00Z\",\"expiresAt\":\"%3\","
           "\"restored\":false}"_s.arg(id, Store::holding(), expiresAt)
               .toUtf8();
}

} // namespace

class SafetyWiringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void startsEmptyOnAFirstLaunch()
    {
        const AppState &app = m_fixture->launch();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.snapshots().isEmpty());
        QVERIFY(app.changeEntries().isEmpty());
        QVERIFY(app.heldItems().isEmpty());
        QCOMPARE(app.cueProtected(), 0);
        QVERIFY(!app.busy());
    }

    void purgesExpiredFilesBeforeAnythingShowsThem()
    {
        const QByteArray manifest = '[' + heldItem(u"held-2-9"_s, u"2099-01-01T00:00:00Z"_s) + ',' +
                                    heldItem(u"held-1-9"_s, u"2020-01-31T00:00:00Z"_s) + ']';
        m_fixture->root().write(u"data/Tarnwick/Holding/manifest.json"_s, manifest);
        m_fixture->root().write(u"data/Tarnwick/Holding/held-1-9/held-1-9.mp3"_s, "old");
        m_fixture->root().write(u"data/Tarnwick/Holding/held-2-9/held-2-9.mp3"_s, "new");
        const AppState &app = m_fixture->launch();
        QCOMPARE(app.heldItems().size(), 1);
        QCOMPARE(app.heldItems().first().id, u"held-2-9"_s);
        QVERIFY(!QFile::exists(m_fixture->root().path(u"data/Tarnwick/Holding/held-1-9"_s)));
        QVERIFY(QFile::exists(
            m_fixture->root().path(u"data/Tarnwick/Holding/held-2-9/held-2-9.mp3"_s)));
    }

    void startsWithEmptyStoresWhereTheirFilesAreBad()
    {
        const QString log = m_fixture->root().write(u"data/Tarnwick/changelog.json"_s, "[{]");
        const QString vault = m_fixture->root().write(u"data/Tarnwick/cuevault.json"_s, "no JSON");
        const AppState &app = m_fixture->launch();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.changeEntries().isEmpty());
        QCOMPARE(app.cueProtected(), 0);
        QVERIFY(!app.toast());
        QCOMPARE(m_fixture->root().read(u"data/Tarnwick/changelog.json"_s), QByteArray("[{]"));
        QCOMPARE(m_fixture->root().read(u"data/Tarnwick/cuevault.json"_s), QByteArray("no JSON"));
    }

    void protectsTheCuesOfEveryFileThatAScanFindsThemIn()
    {
        const QString marked = m_fixture->writeAudio(u"marked.mp3"_s, audioWithCues());
        const QString plain = m_fixture->writeAudio(u"plain.mp3"_s, TagBuilder().audio("x").file());
        m_fixture->writeHomeDatabase({track(marked), track(plain)});
        QCOMPARE(m_fixture->launchAndScan().cueProtected(), 1);
        QVERIFY(m_fixture->root().read(u"data/Tarnwick/cuevault.json"_s).contains("marked.mp3"));
        // A restart reads it back.
        m_fixture->launch(AppState::Environment::Ignored);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(m_fixture->app().cueProtected(), 1);
    }

    void leavesTheCountAloneWhereACaptureWritesNothing()
    {
        const QString marked = m_fixture->writeAudio(u"marked.mp3"_s, audioWithCues());
        m_fixture->writeHomeDatabase({track(marked)});
        AppState &app = m_fixture->launchAndScan();
        QSignalSpy changed(&app, &AppState::safetyChanged);
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(changed.size(), 0);
        QCOMPARE(app.cueProtected(), 1);
    }

    void takesASnapshotOfThePresentLibrary()
    {
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3"_s)});
        AppState &app = m_fixture->launchAndScan();
        app.takeSnapshot(u"Manual snapshot"_s);
        QCOMPARE(app.busy(), u"Taking snapshot…"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!app.busy());
        QCOMPARE(app.snapshots().size(), 1);
        const Snapshot snapshot = app.snapshots().first();
        QCOMPARE(snapshot.reason, u"Manual snapshot"_s);
        QCOMPARE(snapshot.fileCount, 1);
        QVERIFY(app.toast()->message.startsWith(u"Snapshot taken — 1 files, "_s));
        QVERIFY(!app.toast()->reversible);
    }

    void logsAManualSnapshot()
    {
        m_fixture->writeHomeDatabase({});
        AppState &app = m_fixture->launchAndScan();
        app.takeSnapshot(u"Manual snapshot"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.changeEntries().size(), 1);
        const ChangeEntry entry = app.changeEntries().first();
        QCOMPARE(entry.kind, ChangeEntry::Kind::Snapshot);
        QCOMPARE(entry.target, m_fixture->home(u"Music/_Serato_"_s));
        QCOMPARE(entry.detail, u"Manual snapshot"_s);
        QCOMPARE(entry.snapshotId, app.snapshots().first().id);
        QVERIFY(!entry.reversibleUntil);
        QVERIFY(!entry.before && !entry.after && !entry.holdingId && !entry.reversed);
    }

    void takesASnapshotOfTheDefaultLibraryBeforeTheFirstScan()
    {
        m_fixture->writeHomeDatabase({});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        app.takeSnapshot(u"Manual snapshot"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.snapshots().size(), 1);
    }

    void takesASnapshotWhileSeratoRuns()
    {
        m_fixture->writeHomeDatabase({});
        const RunningProgram serato(u"Serato DJ Pro"_s);
        AppState &app = m_fixture->launchAndScan();
        app.takeSnapshot(u"Manual snapshot"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.snapshots().size(), 1);
    }

    void asksForALibraryWhereThereIsNone()
    {
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QVERIFY(m_fixture->waitUntilIdle());
        app.takeSnapshot(u"Manual snapshot"_s);
        QCOMPARE(app.toast()->message, u"Load a library first."_s);
        QVERIFY(!app.toast()->reversible);
        QVERIFY(!app.busy());
    }

    void tellsWhyASnapshotFailed()
    {
        m_fixture->root().makeFolder(u"home/Music/_Serato_"_s);
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        app.takeSnapshot(u"Manual snapshot"_s);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.toast()->message, u"No Serato database found at that location."_s);
        QVERIFY(!app.busy());
        QVERIFY(app.changeEntries().isEmpty());
    }

    void takesAFirstSnapshotAfterEachScanWhereTheEnvironmentAsks_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("snapshots");
        QTest::newRow("1") << QByteArray("1") << 2;
        QTest::newRow("true") << QByteArray("true") << 0;
    }
    void takesAFirstSnapshotAfterEachScanWhereTheEnvironmentAsks()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, snapshots);
        m_fixture->writeHomeDatabase({});
        const ScopedVariable variable("TARNWICK_SNAPSHOT", value);
        AppState &app = m_fixture->launch();
        for (int scan = 0; scan < 2; ++scan) {
            app.rescan();
            QVERIFY(m_fixture->waitUntilIdle());
        }
        QCOMPARE(app.snapshots().size(), snapshots);
        for (const Snapshot &snapshot : app.snapshots())
            QCOMPARE(snapshot.reason, u"First snapshot"_s);
    }

private:
    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(SafetyWiringTest)
#include "safety_wiring_test.moc"
