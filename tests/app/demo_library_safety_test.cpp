// The safety layer over a library as a DJ's would be: what launches, scans and restarts leave in
// the data folder, and that lost cues are seen. The vault's file is read here without the program's
// own reader, and the audio files without its codec.

#include "safety/snapshot_store.h"
#include "safety/store.h"
#include "support/app_fixture.h"
#include "support/test_files.h"
#include "tags/geob_files.h"
#include "tools/demo_library_run.h"

#include "platform/fault_gate.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// The frames of an entry: the key in the file, and the name in the audio file.
const QList<std::pair<QString, QByteArray>> frameNames = {{u"markers2"_s, "Serato Markers2"},
                                                          {u"markersLegacy"_s, "Serato Markers_"},
                                                          {u"beatGrid"_s, "Serato BeatGrid"}};

} // namespace

class DemoLibrarySafetyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }
    void makesItsFolderAtTheFirstLaunch();
    void changesNothingAtASecondLaunch();
    void keepsWhatEveryFileHoldsOfCues();
    void asksNoMoreOfAnUnchangedLibraryThanAProbe();
    void tellsOfStrippedFilesAtTheNextScan();
    void tellsOfThemAfterARestartToo();
    void putsBackWhatAFileHasLost();
    void goesBackToASnapshot();
    void keepsNothingButItsOwnNamesInItsFolder();

private:
    QString data(const QString &name = {}) const
    {
        return m_fixture->root().path(u"data/Tarnwick/"_s + name);
    }
    QJsonObject vault() const
    {
        return QJsonDocument::fromJson(contentOf(data(u"cuevault.json"_s))).object();
    }
    /// The paths of the first tracks that have cues and a grid.
    QStringList cuedPaths(int count) const;
    QStringList lostPaths() const;
    void rescan();

    std::unique_ptr<AppFixture> m_fixture;
    QJsonObject m_expected;
};

void DemoLibrarySafetyTest::init()
{
    m_fixture = std::make_unique<AppFixture>();
    const QString expectations = m_fixture->root().path(u"expected.json"_s);
    const Run run = demoLibrary({u"--tracks"_s, u"80"_s, u"--seed"_s, u"7"_s, u"--out"_s,
                                 m_fixture->root().path(u"home"_s), u"--expect"_s, expectations});
    QVERIFY2(run.status == 0, run.errors.constData());
    m_expected = QJsonDocument::fromJson(contentOf(expectations)).object();
}

QStringList DemoLibrarySafetyTest::cuedPaths(int count) const
{
    QStringList paths;
    for (const ScannedTrack &track : m_fixture->app().result()->tracks) {
        if (track.hasMarkers && track.hasBeatGrid && paths.size() < count)
            paths << track.track.relativePath;
    }
    return paths;
}

QStringList DemoLibrarySafetyTest::lostPaths() const
{
    QStringList paths;
    for (const CueVault::Loss &loss : m_fixture->app().cueLosses())
        paths << loss.track.track.relativePath;
    return paths;
}

void DemoLibrarySafetyTest::rescan()
{
    m_fixture->app().rescan();
    QVERIFY(m_fixture->waitUntilIdle());
}

void DemoLibrarySafetyTest::makesItsFolderAtTheFirstLaunch()
{
    const AppState &app = m_fixture->launch(AppState::Environment::Ignored);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(namesIn(data()), (QStringList{u"Holding"_s, u"Snapshots"_s, u"signal.json"_s}));
    QCOMPARE(modeOf(data()), 0700);
    QCOMPARE(contentOf(data(u"Holding/manifest.json"_s)), "[]\n"_ba);
    QVERIFY(app.changeEntries().isEmpty() && app.snapshots().isEmpty());
    QVERIFY(app.heldItems().isEmpty() && app.cueLosses().isEmpty());
    QCOMPARE(app.cueProtected(), 0);
    QVERIFY(!app.toast());
}

void DemoLibrarySafetyTest::changesNothingAtASecondLaunch()
{
    m_fixture->launchAndScan().takeSnapshot(u"Manual snapshot"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    const auto before = treeOf(data());
    const int cueProtected = m_fixture->app().cueProtected();
    const AppState &app = m_fixture->launch(AppState::Environment::Ignored);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(treeOf(data()), before);
    QCOMPARE(app.cueProtected(), cueProtected);
    QCOMPARE(app.changeEntries().size(), 1);
    QCOMPARE(app.snapshots().size(), 1);
}

void DemoLibrarySafetyTest::keepsWhatEveryFileHoldsOfCues()
{
    const AppState &app = m_fixture->launchAndScan();
    const QJsonObject entries = vault();
    QMap<QString, int> counts;
    for (const ScannedTrack &track : app.result()->tracks) {
        const QString path = track.track.relativePath;
        const QByteArray file = raw::fileBytes(u'/' + path);
        const QByteArray tag = file.first(raw::tagSize(file));
        const QJsonObject entry = entries[path].toObject();
        for (const auto &[key, name] : frameNames) {
            QCOMPARE(entry.contains(key), tag.contains(name));
            const QByteArray frame = QByteArray::fromBase64(entry[key].toString().toLatin1());
            QVERIFY(tag.contains(frame));
            QVERIFY(frame.isEmpty() || frame.contains(name));
            counts[key] += entry.contains(key);
        }
        QVERIFY(entry.isEmpty() || entry[u"fileSize"_s].toInteger() == file.size());
    }
    QVERIFY(counts[u"markers2"_s] > 20);
    QCOMPARE(counts[u"markers2"_s], m_expected[u"withMarkers"_s].toInt());
    QCOMPARE(counts[u"beatGrid"_s], m_expected[u"withGrid"_s].toInt());
    QCOMPARE(app.cueProtected(), int(entries.size()));
    QVERIFY(lostPaths().isEmpty());
}

void DemoLibrarySafetyTest::asksNoMoreOfAnUnchangedLibraryThanAProbe()
{
    m_fixture->launchAndScan();
    const auto before = treeOf(data());
    QMap<QString, int> opened;
    int written = 0;
    {
        const platform::ScopedFaults faults(
            [&](platform::FileOperation operation, const QString &path) {
                written += operation == platform::FileOperation::Write;
                if (operation == platform::FileOperation::Open)
                    ++opened[path];
                return 0;
            });
        rescan();
    }
    QCOMPARE(written, 0);
    for (const QString &path : vault().keys())
        QCOMPARE(opened[u'/' + path], 1);
    QVERIFY(!opened.contains(data(u"cuevault.json"_s)));
    QCOMPARE(treeOf(data()), before);
}

void DemoLibrarySafetyTest::tellsOfStrippedFilesAtTheNextScan()
{
    m_fixture->launchAndScan();
    const QByteArray vaultBefore = contentOf(data(u"cuevault.json"_s));
    const int cueProtected = m_fixture->app().cueProtected();
    const QStringList stripped = cuedPaths(2);
    // The one keeps its other frames, the other its audio alone.
    QVERIFY(SeratoGEOB::stripCueFrames(u'/' + stripped[0]));
    const QByteArray file = raw::fileBytes(u'/' + stripped[1]);
    put(u'/' + stripped[1], file.sliced(raw::tagSize(file)));
    QVERIFY(lostPaths().isEmpty());
    rescan();
    QCOMPARE(lostPaths(), stripped);
    for (const CueVault::Loss &loss : m_fixture->app().cueLosses())
        QCOMPARE(loss.what(), u"Hot cues and beat grid"_s);
    QCOMPARE(contentOf(data(u"cuevault.json"_s)), vaultBefore);
    QCOMPARE(m_fixture->app().cueProtected(), cueProtected);
}

void DemoLibrarySafetyTest::tellsOfThemAfterARestartToo()
{
    m_fixture->launchAndScan();
    const QStringList stripped = cuedPaths(1);
    QVERIFY(SeratoGEOB::stripCueFrames(u'/' + stripped[0]));
    m_fixture->launchAndScan();
    QCOMPARE(lostPaths(), stripped);
    // A file that has gone is missing, not a loss.
    QVERIFY(QFile::remove(u'/' + stripped[0]));
    rescan();
    QVERIFY(lostPaths().isEmpty());
}

void DemoLibrarySafetyTest::putsBackWhatAFileHasLost()
{
    m_fixture->launchAndScan();
    const QString path = cuedPaths(1).first();
    const QByteArray audio = [&] {
        const QByteArray file = raw::fileBytes(u'/' + path);
        return file.sliced(raw::tagSize(file));
    }();
    QVERIFY(SeratoGEOB::stripCueFrames(u'/' + path));
    rescan();
    QCOMPARE(lostPaths(), QStringList{path});
    const auto entry = CueVault().entry(path);
    QVERIFY(entry.has_value());
    QVERIFY(SeratoGEOB::restoreCueFrames(entry->payloads(), u'/' + path));
    rescan();
    QVERIFY(lostPaths().isEmpty());
    const QByteArray file = raw::fileBytes(u'/' + path);
    QVERIFY(raw::framesFillTag(file.first(raw::tagSize(file))));
    QVERIFY(file.sliced(raw::tagSize(file)) == audio);
    QCOMPARE(SeratoGEOB::captureCueFrames(u'/' + path), entry->payloads());
}

void DemoLibrarySafetyTest::goesBackToASnapshot()
{
    AppState &app = m_fixture->launchAndScan();
    const QString library = app.result()->location.folderPath();
    const auto before = treeOf(library);
    app.takeSnapshot(u"Manual snapshot"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(treeOf(library), before);
    put(app.result()->location.databasePath(), "damaged");
    QVERIFY(QDir(library + u"/Subcrates"_s).removeRecursively());
    QVERIFY(SnapshotStore::restore(app.snapshots().first(), app.result()->location));
    QCOMPARE(treeOf(library), before);
    QCOMPARE(m_fixture->launch(AppState::Environment::Ignored).snapshots().size(), 2);
}

void DemoLibrarySafetyTest::keepsNothingButItsOwnNamesInItsFolder()
{
    m_fixture->launchAndScan().takeSnapshot(u"Manual snapshot"_s);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(namesIn(data()), (QStringList{u"Holding"_s, u"Snapshots"_s, u"changelog.json"_s,
                                           u"cuevault.json"_s, u"signal.json"_s}));
}

QTEST_GUILESS_MAIN(DemoLibrarySafetyTest)
#include "demo_library_safety_test.moc"
