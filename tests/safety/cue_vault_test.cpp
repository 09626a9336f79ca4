#include "safety/cue_vault.h"

#include "platform/clock.h"
#include "platform/fault_gate.h"
#include "support/vault_folder.h"
#include "tags/geob_files.h"

#include <QTest>

#include <atomic>
#include <cerrno>
#include <thread>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

} // namespace

class CueVaultTest : public QObject, private VaultFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }
    void startsEmptyWithoutAFile();
    void capturesTheFramesOfAFile();
    void leavesAbsentFramesOut();
    void passesOverWhatHasNothingToCapture_data();
    void passesOverWhatHasNothingToCapture();
    void opensAndWritesNothingAtASecondScan();
    void writesOnceForManyFiles();
    void triesAFileThatCouldNotBeReadAgain();
    void takesPathsAsTheDatabaseHoldsThem();
    void countsOnlyEntriesThatHoldAFrame();
    void ordersItsKeysByCodeUnit();
    void writesWhatItReadByteForByte();
    void startsEmptyFromABadFile_data();
    void startsEmptyFromABadFile();
    void staysAheadOfADiskThatFails();
    void takesTheLastOfEqualPaths();
    void letsTheMainThreadReadWhileItCaptures();
    void capturesOneAfterTheOther();
    void losesNothingOfAnothers();
    void outlivesItsOwnLoading();
};

void CueVaultTest::startsEmptyWithoutAFile()
{
    const CueVault vault;
    QCOMPARE(vault.entries()->size(), 0);
    QCOMPARE(vault.protectedCount(), 0);
    QVERIFY(!vault.entry(u"a.mp3"_s).has_value());
    QVERIFY(vault.isLoaded());
    QVERIFY(!QFileInfo::exists(file()));
}

void CueVaultTest::capturesTheFramesOfAFile()
{
    const platform::ScopedClock clock(noon.addMSecs(5));
    const ScannedTrack track = cued(u"a.mp3"_s);
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{track}), 1);
    const auto entry = vault.entry(track.track.relativePath);
    QVERIFY(entry.has_value());
    QCOMPARE(entry->capturedAt(), noon);
    QCOMPARE(entry->fileSize(), track.onDiskSizeBytes);
    QCOMPARE(entry->payloads(), SeratoGEOB::captureCueFrames(path(u"a.mp3"_s)));
    QCOMPARE(entry->payloads().size(), 2);
    QCOMPARE(vault.protectedCount(), 1);
    QCOMPARE(contentOf(file()), "{\n  \"" + track.track.relativePath.toUtf8() +
                                    "\": " + entry->text().toByteArray() + "\n}\n");
    QCOMPARE(*CueVault().entries(), *vault.entries());
}

void CueVaultTest::leavesAbsentFramesOut()
{
    const ScannedTrack track = write(u"a.mp3"_s, TagBuilder().object(markersName).file());
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{track}), 1);
    QVERIFY(contentOf(file()).contains("markers2"));
    QVERIFY(!contentOf(file()).contains("beatGrid"));
    QVERIFY(!contentOf(file()).contains("markersLegacy"));
}

void CueVaultTest::passesOverWhatHasNothingToCapture_data()
{
    QTest::addColumn<bool>("exists");
    QTest::addColumn<bool>("hasMarkers");
    QTest::addColumn<bool>("hasGrid");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("captured");
    const QByteArray good = TagBuilder().object(markersName).object(gridName).file();
    QTest::newRow("good") << true << true << true << good << 1;
    QTest::newRow("markers alone") << true << true << false << good << 1;
    QTest::newRow("a grid alone") << true << false << true << good << 1;
    QTest::newRow("not on disk, says the scan") << false << true << true << good << 0;
    QTest::newRow("nothing found by the scan") << true << false << false << good << 0;
    QTest::newRow("no tag any more") << true << true << true << QByteArray("audio") << 0;
    QTest::newRow("no frames any more")
        << true << true << true << TagBuilder().object("Serato Autotags").file() << 0;
}

void CueVaultTest::passesOverWhatHasNothingToCapture()
{
    QFETCH(bool, exists);
    QFETCH(bool, hasMarkers);
    QFETCH(bool, hasGrid);
    QFETCH(QByteArray, content);
    QFETCH(int, captured);
    ScannedTrack track = write(u"a.mp3"_s, content);
    track.existsOnDisk = exists;
    track.hasMarkers = hasMarkers;
    track.hasBeatGrid = hasGrid;
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{track}), captured);
    QCOMPARE(vault.entries()->size(), captured);
    QCOMPARE(QFileInfo::exists(file()), captured > 0);
}

void CueVaultTest::opensAndWritesNothingAtASecondScan()
{
    const Tracks tracks = {cued(u"a.mp3"_s), cued(u"b.mp3"_s)};
    CueVault vault;
    QCOMPARE(vault.capture(tracks), 2);
    QFile::remove(file());
    CueVault other; // reads nothing, and so has all to capture
    QCOMPARE(other.capture(tracks), 2);
    int calls = 0;
    const platform::ScopedFaults faults([&calls](platform::FileOperation, const QString &) {
        ++calls;
        return 0;
    });
    QCOMPARE(vault.capture(tracks), 0);
    QCOMPARE(calls, 0);
}

void CueVaultTest::writesOnceForManyFiles()
{
    Tracks tracks;
    for (int i = 0; i < 20; ++i)
        tracks.push_back(cued(u"%1.mp3"_s.arg(i)));
    CueVault vault;
    (void)vault.entries();
    std::atomic<int> opened{0};
    const platform::ScopedFaults faults(
        [&](platform::FileOperation operation, const QString &asked) {
            opened += operation == platform::FileOperation::Open && asked == file();
            return 0;
        });
    QCOMPARE(vault.capture(tracks), 20);
    QCOMPARE(opened.load(), 1);
}

void CueVaultTest::triesAFileThatCouldNotBeReadAgain()
{
    const ScannedTrack track = cued(u"a.mp3"_s);
    CueVault vault;
    (void)vault.entries();
    {
        const platform::ScopedFaults faults(
            [](platform::FileOperation, const QString &) { return EIO; });
        QCOMPARE(vault.capture(Tracks{track}), 0);
    }
    QCOMPARE(vault.entries()->size(), 0);
    QCOMPARE(vault.capture(Tracks{track}), 1);
}

void CueVaultTest::takesPathsAsTheDatabaseHoldsThem()
{
    ScannedTrack slashed = cued(u"a.mp3"_s);
    slashed.track.relativePath.prepend(u'/');
    const ScannedTrack plain = scanned(u"a.mp3"_s);
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{slashed, plain, plain}), 2);
    QVERIFY(vault.entry(slashed.track.relativePath).has_value());
    QVERIFY(vault.entry(plain.track.relativePath).has_value());
}

void CueVaultTest::countsOnlyEntriesThatHoldAFrame()
{
    put(file(), R"({"empty":{"capturedAt":"2026-11-20T12:00:00Z","fileSize":1},)"
                R"("full":{"beatGrid":"","capturedAt":"2026-11-20T12:00:00Z","fileSize":1}})");
    const CueVault vault;
    QCOMPARE(vault.entries()->size(), 2);
    QCOMPARE(vault.protectedCount(), 1);
}

void CueVaultTest::ordersItsKeysByCodeUnit()
{
    // In UTF-16 the second comes ahead of the third, in UTF-8 behind it.
    const QStringList names = {u"Z"_s, u"a"_s, u"\u00E9"_s, u"\U0001F3A7"_s, u"\uFF5E"_s};
    Tracks tracks;
    for (const QString &name : {names.at(3), names.at(1), names.at(4), names.at(0), names.at(2)})
        tracks.push_back(cued(name + u".mp3"_s));
    CueVault vault;
    QCOMPARE(vault.capture(tracks), 5);
    const QByteArray written = contentOf(file());
    qsizetype last = -1;
    for (const QString &name : names) {
        const qsizetype at = written.indexOf("/" + name.toUtf8() + ".mp3\": {");
        QVERIFY2(at > last, qPrintable(name));
        last = at;
    }
}

void CueVaultTest::writesWhatItReadByteForByte()
{
    const platform::ScopedClock clock(noon);
    Tracks tracks;
    for (int i = 0; i < 30; ++i)
        tracks.push_back(cued(u"“%1”\\é.mp3"_s.arg(i), QByteArray(i * 50, 'x')));
    CueVault vault;
    QCOMPARE(vault.capture(tracks), 30);
    const QByteArray written = contentOf(file());
    CueVault reloaded;
    const ScannedTrack last = cued(u"”.mp3"_s);
    QCOMPARE(reloaded.capture(Tracks{last}), 1);
    const QByteArray path = last.track.relativePath.toUtf8();
    const QByteArray entry = reloaded.entry(last.track.relativePath)->text().toByteArray();
    QCOMPARE(contentOf(file()), written.chopped(3) + ",\n  \"" + path + "\": " + entry + "\n}\n");
}

void CueVaultTest::startsEmptyFromABadFile_data()
{
    QTest::addColumn<QByteArray>("bad");
    const QByteArray good = R"({"a":{"capturedAt":"2026-11-20T12:00:00Z","fileSize":1}})";
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("cues");
    QTest::newRow("a list") << QByteArray("[]");
    QTest::newRow("cut") << good.chopped(1);
    QTest::newRow("something behind") << good + "{}";
    QTest::newRow("one bad entry")
        << good.chopped(1) + R"(,"b":{"capturedAt":"2026-11-20T12:00:00Z"}})";
    QTest::newRow("a path of bad UTF-8") << QByteArray(good).replace("\"a\"", "\"\xFF\"");
}

void CueVaultTest::startsEmptyFromABadFile()
{
    QFETCH(QByteArray, bad);
    put(file(), bad);
    CueVault vault;
    QCOMPARE(vault.entries()->size(), 0);
    ScannedTrack lost = cued(u"a.mp3"_s);
    QCOMPARE(vault.capture(Tracks{}), 0);
    QCOMPARE(contentOf(file()), bad);
    QCOMPARE(vault.capture(Tracks{lost}), 1);
    QCOMPARE(CueVault().entries()->size(), 1);
}

void CueVaultTest::staysAheadOfADiskThatFails()
{
    CueVault vault;
    (void)vault.entries();
    {
        const platform::ScopedFaults faults(
            [](platform::FileOperation operation, const QString &asked) {
                const bool isVault = asked.endsWith(u"cuevault.json"_s);
                return isVault && operation == platform::FileOperation::Write ? ENOSPC : 0;
            });
        QCOMPARE(vault.capture(Tracks{cued(u"a.mp3"_s)}), 1);
    }
    QCOMPARE(vault.protectedCount(), 1);
    QCOMPARE(CueVault().protectedCount(), 0);
    QCOMPARE(vault.capture(Tracks{cued(u"b.mp3"_s)}), 1);
    QCOMPARE(CueVault().protectedCount(), 2);
}

void CueVaultTest::takesTheLastOfEqualPaths()
{
    put(file(), R"({"a":{"capturedAt":"2026-11-20T12:00:00Z","fileSize":1},)"
                R"("\u0061":{"capturedAt":"2026-11-20T12:00:00Z","fileSize":2}})");
    const CueVault vault;
    QCOMPARE(vault.entries()->size(), 1);
    QCOMPARE(vault.entry(u"a"_s)->fileSize(), quint64(2));
}

void CueVaultTest::letsTheMainThreadReadWhileItCaptures()
{
    Tracks tracks;
    for (int i = 0; i < 200; ++i)
        tracks.push_back(cued(u"%1.mp3"_s.arg(i)));
    auto vault = std::make_shared<CueVault>();
    std::atomic<bool> done{false};
    std::thread capturing([vault, &tracks, &done] {
        for (const ScannedTrack &track : tracks)
            (void)vault->capture(Tracks{track});
        done = true;
    });
    int last = 0;
    while (!done) {
        const auto entries = vault->entries();
        const int count = vault->protectedCount();
        QVERIFY(entries->size() >= last && count >= entries->size());
        last = int(entries->size());
    }
    capturing.join();
    QCOMPARE(vault->protectedCount(), 200);
}

void CueVaultTest::capturesOneAfterTheOther()
{
    Tracks even, odd;
    for (int i = 0; i < 40; ++i)
        (i % 2 ? odd : even).push_back(cued(u"%1.mp3"_s.arg(i)));
    CueVault vault;
    std::thread other([&] { (void)vault.capture(even); });
    (void)vault.capture(odd);
    other.join();
    QCOMPARE(vault.protectedCount(), 40);
    QCOMPARE(*CueVault().entries(), *vault.entries());
}

/// Of another program's, on the same data folder.
void CueVaultTest::losesNothingOfAnothers()
{
    platform::ScopedClock clock(noon);
    CueVault one;
    CueVault other;
    (void)other.entries();
    const ScannedTrack a = cued(u"a.mp3"_s, "a, early");
    QCOMPARE(one.capture(Tracks{a, cued(u"b.mp3"_s)}), 2);
    clock.set(noon.addSecs(60));
    QCOMPARE(other.capture(Tracks{cued(u"a.mp3"_s, "a, the later copy"), cued(u"c.mp3"_s)}), 2);
    QCOMPARE(CueVault().protectedCount(), 3);
    QCOMPARE(one.capture(Tracks{cued(u"d.mp3"_s)}), 1);
    const CueVault both;
    QCOMPARE(both.protectedCount(), 4);
    QCOMPARE(*both.entries(), *one.entries());
    const QString markers = QString::fromLatin1(markersName);
    QVERIFY(both.entry(a.track.relativePath)->payloads().value(markers).endsWith("later copy"));
}

void CueVaultTest::outlivesItsOwnLoading()
{
    QByteArray large = "{";
    for (int i = 0; i < 20'000; ++i)
        large += (i ? ",\"" : "\"") + QByteArray::number(i) +
                 R"(":{"capturedAt":"2026-11-20T12:00:00Z","fileSize":1})";
    put(file(), large + "}");
    for (int i = 0; i < 5; ++i)
        CueVault(); // gone at once
    QCOMPARE(CueVault().entries()->size(), 20'000);
}

QTEST_GUILESS_MAIN(CueVaultTest)
#include "cue_vault_test.moc"
