// The crates of the scanned library in AppState, and the figures that rest on them.

#include "app/app_state.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray track(const QString &path)
{
    return trackRecord({textRecord("pfil", path), textRecord("tsng", path)});
}

QStringList namesOf(const QList<LoadedCrate> &crates)
{
    QStringList names;
    for (const LoadedCrate &crate : crates)
        names << crate.name;
    return names;
}

QStringList pathsIn(const std::vector<ScannedTrack> &tracks)
{
    QStringList paths;
    for (const ScannedTrack &scanned : tracks)
        paths << scanned.track.relativePath;
    return paths;
}

} // namespace

class CrateWiringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void thereIsNothingBeforeTheFirstScan()
    {
        m_fixture->writeHomeDatabase({track(u"a.mp3"_s)});
        writeCrate(u"Mix"_s, {u"a.mp3"_s});
        const AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QVERIFY(app.crates().isEmpty());
        QVERIFY(app.trackMap().isEmpty());
        QVERIFY(app.tracksInCrates({u"Mix"_s}).empty());
    }

    void aScanReadsTheCratesOfItsLibrary()
    {
        m_fixture->writeHomeDatabase({track(u"a.mp3"_s)});
        writeCrate(u"b"_s, {u"a.mp3"_s, u"gone.mp3"_s});
        writeCrate(u"A"_s, {});
        const AppState &app = m_fixture->launchAndScan();
        QCOMPARE(namesOf(app.crates()), QStringList({u"A"_s, u"b"_s}));
        QCOMPARE(app.crates()[1].paths, QStringList({u"a.mp3"_s, u"gone.mp3"_s}));
    }

    void theCratesOfTheHomeLibraryAreNotThoseOfAnother()
    {
        m_fixture->writeHomeDatabase({});
        writeCrate(u"Home"_s, {});
        m_fixture->writeVolumeDatabase(u"Stick"_s, {});
        AppState &app = m_fixture->launchAndScan();
        for (const SeratoLibrary::Location &location : app.locations()) {
            if (location.volumeName == u"Stick"_s)
                app.startScan(location);
        }
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(app.crates().isEmpty());
    }

    void aRescanReadsThemAgain()
    {
        m_fixture->writeHomeDatabase({});
        writeCrate(u"Old"_s, {});
        AppState &app = m_fixture->launchAndScan();
        writeCrate(u"New"_s, {u"a.mp3"_s});
        QCOMPARE(namesOf(app.crates()), QStringList{u"Old"_s});
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(namesOf(app.crates()), QStringList({u"New"_s, u"Old"_s}));
    }

    void cratesStayWhereAScanFails()
    {
        const QString database = m_fixture->writeHomeDatabase({});
        writeCrate(u"Mix"_s, {});
        AppState &app = m_fixture->launchAndScan();
        QVERIFY(QFile::remove(database));
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(namesOf(app.crates()), QStringList{u"Mix"_s});
    }

    /// The screen turns to the score ahead of the crates, the cues are captured behind them.
    void cratesComeBehindTheSelectionAndAheadOfTheCapture()
    {
        m_fixture->writeHomeDatabase({});
        writeCrate(u"Mix"_s, {});
        AppState &app = m_fixture->launch(AppState::Environment::Ignored);
        QVERIFY(m_fixture->waitUntilIdle());
        app.setSelection(Screen::Hygiene);
        QStringList told;
        connect(&app, &AppState::selectionChanged, &app, [&] { told << u"selection"_s; });
        connect(&app, &AppState::scanFinished, &app, [&] { told << u"end"_s; });
        connect(&app, &AppState::cratesChanged, &app, [&] {
            // The scan alone is under way: nothing has been started behind it yet.
            told << u"%1 crates, %2 task"_s.arg(app.crates().size()).arg(app.pendingTasks());
        });
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(told, QStringList({u"selection"_s, u"1 crates, 1 task"_s, u"end"_s}));
    }

    void tracksAreFoundByTheirPathAfterEachScan()
    {
        m_fixture->writeHomeDatabase({track(u"/a.mp3"_s)});
        AppState &app = m_fixture->launchAndScan();
        QCOMPARE(app.trackMap().value(u"a.mp3"_s), &app.result()->tracks.front());
        m_fixture->writeHomeDatabase({track(u"b.mp3"_s)});
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(app.trackMap().keys(), QList<QString>{u"b.mp3"_s});
        QCOMPARE(app.trackMap().value(u"b.mp3"_s), &app.result()->tracks.front());
    }

    void aSetHoldsTheTracksOfItsCrates()
    {
        m_fixture->writeHomeDatabase({track(u"a.mp3"_s), track(u"b.mp3"_s), track(u"c.mp3"_s)});
        writeCrate(u"One"_s, {u"c.mp3"_s, u"a.mp3"_s});
        writeCrate(u"Two"_s, {u"/a.mp3"_s, u"b.mp3"_s, u"nowhere.mp3"_s});
        const AppState &app = m_fixture->launchAndScan();
        QCOMPARE(pathsIn(app.tracksInCrates({u"One"_s, u"Two"_s})),
                 QStringList({u"c.mp3"_s, u"a.mp3"_s, u"b.mp3"_s}));
        QCOMPARE(pathsIn(app.tracksInCrates({u"Two"_s})), QStringList({u"a.mp3"_s, u"b.mp3"_s}));
    }

private:
    void writeCrate(const QString &name, const QStringList &entries) const
    {
        QByteArray bytes = crateVersion();
        for (const QString &entry : entries)
            bytes += crateEntry(entry);
        m_fixture->root().write(u"home/Music/_Serato_/Subcrates/%1.crate"_s.arg(name), bytes);
    }

    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(CrateWiringTest)
#include "crate_wiring_test.moc"
