// What the vault tells of files that have changed since their cues were captured.

#include "platform/clock.h"
#include "support/vault_folder.h"
#include "tags/geob_files.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

} // namespace

class CueLossesTest : public QObject, private VaultFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }
    void tellsWhatBecameOfAFile_data();
    void tellsWhatBecameOfAFile();
    void reportsNoLossForAFileThatIsGone();
    void countsATrackWhoseTagsWereNotReadAsLost();
    void namesALoss_data();
    void namesALoss();
    void reportsLossesInTheOrderOfTheTracks();
    void keepsAnEntryThatWasPutBack();
};

void CueLossesTest::tellsWhatBecameOfAFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("captured");
    QTest::addColumn<QString>("lost"); // by name; "" for no loss
    const QByteArray before =
        TagBuilder().object(markersName, "12345678").object(gridName, "1234").file();
    const auto row = [&](const char *name, const QByteArray &content, int captured,
                         const QString &lost) {
        QTest::newRow(name) << content << captured << lost;
    };
    const auto padded = [&](TagBuilder tag) {
        const qsizetype missing = before.size() - tag.file().size();
        return tag.padding(missing).file();
    };
    row("nothing", before, 0, {});
    row("cues stripped", TagBuilder().object("other").file(), 0, u"Hot cues and beat grid"_s);
    row("cues stripped, same size", padded(TagBuilder().object("x", "")), 0,
        u"Hot cues and beat grid"_s);
    row("another copy without cues", "no tag at all", 0, u"Hot cues and beat grid"_s);
    row("another copy with its own cues",
        TagBuilder().object(markersName, "others").object(gridName, "other grid").file(), 1, {});
    row("cues edited, same size",
        TagBuilder().object(markersName, "87654321").object(gridName, "1234").file(), 0, {});
    row("grid stripped, same size", padded(TagBuilder().object(markersName, "12345678")), 0,
        u"Beat grid"_s);
    row("grid stripped, other size", TagBuilder().object(markersName, "12345678").file(), 1, {});
    row("markers stripped, same size", padded(TagBuilder().object(gridName, "1234")), 0,
        u"Hot cues"_s);
}

void CueLossesTest::tellsWhatBecameOfAFile()
{
    QFETCH(QByteArray, content);
    QFETCH(int, captured);
    QFETCH(QString, lost);
    const platform::ScopedClock clock(noon);
    const QByteArray before =
        TagBuilder().object(markersName, "12345678").object(gridName, "1234").file();
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{write(u"a.mp3"_s, before)}), 1);
    const CueEntry first = *vault.entry(scanned(u"a.mp3"_s).track.relativePath);

    const ScannedTrack after = write(u"a.mp3"_s, content);
    QCOMPARE(vault.capture(Tracks{after}), captured);
    const CueEntry entry = *vault.entry(after.track.relativePath);
    QCOMPARE(entry == first, captured == 0);
    if (captured > 0)
        QCOMPARE(entry.payloads(), SeratoGEOB::captureCueFrames(path(u"a.mp3"_s)));
    const auto losses = vault.losses(Tracks{after});
    QCOMPARE(losses.size(), lost.isEmpty() ? 0 : 1);
    if (!losses.isEmpty()) {
        QCOMPARE(losses.first().what(), lost);
        QCOMPARE(losses.first().capturedAt, noon);
        QCOMPARE(losses.first().track, after);
    }
}

void CueLossesTest::reportsNoLossForAFileThatIsGone()
{
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{cued(u"a.mp3"_s)}), 1);
    QFile::remove(path(u"a.mp3"_s));
    const ScannedTrack gone = scanned(u"a.mp3"_s);
    QCOMPARE(vault.capture(Tracks{gone}), 0);
    QCOMPARE(vault.losses(Tracks{gone}).size(), 0);
    QCOMPARE(vault.protectedCount(), 1);
    QCOMPARE(vault.losses(Tracks{scanned(u"unknown.mp3"_s)}).size(), 0);
}

void CueLossesTest::countsATrackWhoseTagsWereNotReadAsLost()
{
    ScannedTrack track = cued(u"a.mp3"_s);
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{track}), 1);
    track.hasMarkers = track.hasBeatGrid = track.tagsRead = false;
    QCOMPARE(vault.capture(Tracks{track}), 0);
    QCOMPARE(vault.losses(Tracks{track}).size(), 1);
}

void CueLossesTest::namesALoss_data()
{
    QTest::addColumn<bool>("lostMarkers");
    QTest::addColumn<bool>("lostGrid");
    QTest::addColumn<QString>("what");
    QTest::newRow("both") << true << true << u"Hot cues and beat grid"_s;
    QTest::newRow("markers") << true << false << u"Hot cues"_s;
    QTest::newRow("grid") << false << true << u"Beat grid"_s;
    QTest::newRow("neither") << false << false << u"—"_s;
}

void CueLossesTest::namesALoss()
{
    QFETCH(bool, lostMarkers);
    QFETCH(bool, lostGrid);
    CueVault::Loss loss;
    loss.lostMarkers = lostMarkers;
    loss.lostGrid = lostGrid;
    QTEST(loss.what(), "what");
}

void CueLossesTest::reportsLossesInTheOrderOfTheTracks()
{
    Tracks tracks = {cued(u"b.mp3"_s), cued(u"a.mp3"_s), cued(u"c.mp3"_s)};
    CueVault vault;
    QCOMPARE(vault.capture(tracks), 3);
    for (ScannedTrack &track : tracks)
        track.hasMarkers = track.track.relativePath.endsWith(u"a.mp3"_s);
    const auto first = vault.losses(tracks);
    const auto second = vault.losses(tracks);
    QCOMPARE(first.size(), 2);
    QCOMPARE(first.at(0).track, tracks.at(0));
    QCOMPARE(first.at(1).track, tracks.at(2));
    QCOMPARE(second.at(0).track, first.at(0).track);
    QVERIFY(second.at(0).id != first.at(0).id && first.at(0).id != first.at(1).id);
}

void CueLossesTest::keepsAnEntryThatWasPutBack()
{
    CueVault vault;
    QCOMPARE(vault.capture(Tracks{cued(u"a.mp3"_s)}), 1);
    for (int round = 0; round < 2; ++round) {
        QVERIFY(SeratoGEOB::stripCueFrames(path(u"a.mp3"_s)));
        const ScannedTrack stripped = scanned(u"a.mp3"_s);
        QCOMPARE(vault.capture(Tracks{stripped}), 0);
        QCOMPARE(vault.losses(Tracks{stripped}).size(), 1);
        const auto entry = vault.entry(stripped.track.relativePath);
        QVERIFY(SeratoGEOB::restoreCueFrames(entry->payloads(), path(u"a.mp3"_s)));
        QCOMPARE(vault.losses(Tracks{scanned(u"a.mp3"_s)}).size(), 0);
    }
}

QTEST_GUILESS_MAIN(CueLossesTest)
#include "cue_losses_test.moc"
