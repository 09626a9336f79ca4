// The vault under faults: whichever call of the system fails, and wherever the process is killed,
// no audio file changes, no entry is half one, and the next scan has all of it again.

#include "support/fault_loop.h"
#include "support/track_builder.h"
#include "support/vault_folder.h"
#include "tags/geob_files.h"

#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray fileWithCues()
{
    return TagBuilder().object(markersName, "cues").object(gridName, "grid").file();
}

/// The tracks "a.mp3" and "b.mp3" of a folder, as a scan sees them.
Tracks twoTracksIn(const QString &folder)
{
    Tracks tracks;
    for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s}) {
        const QString path = folder + u'/' + name;
        tracks.push_back(
            onDisk().path(path.sliced(1)).markers().bytes(quint64(QFileInfo(path).size())));
    }
    return tracks;
}

/// The first of two files is in the vault.
void prepareVault(const QString &folder)
{
    keepDataIn(folder);
    put(folder + u"/a.mp3"_s, fileWithCues());
    put(folder + u"/b.mp3"_s, fileWithCues() + "longer");
    const Tracks tracks = twoTracksIn(folder);
    if (CueVault().capture(std::span(tracks).first(1)) != 1)
        qFatal("nothing was captured");
}

void captureBoth(const QString &folder)
{
    keepDataIn(folder);
    (void)CueVault().capture(twoTracksIn(folder));
}

/// The audio files are as they were; the vault holds one or both or, being unreadable, none. What
/// it holds is whole, and the next scan has it all again.
QString troubleAfterCapture(const QString &folder)
{
    keepDataIn(folder);
    if (contentOf(folder + u"/a.mp3"_s) != fileWithCues() ||
        contentOf(folder + u"/b.mp3"_s) != fileWithCues() + "longer")
        return u"an audio file has changed"_s;
    const auto wanted = SeratoGEOB::captureCueFrames(folder + u"/a.mp3"_s);
    CueVault vault;
    const auto entries = vault.entries();
    for (const CueEntry &entry : *entries) {
        if (entry.payloads() != wanted)
            return u"half an entry"_s;
    }
    (void)vault.capture(twoTracksIn(folder));
    return CueVault().protectedCount() == 2 ? QString() : u"the next scan didn't mend it"_s;
}

QList<Interruption> cases()
{
    return {{u"capture"_s, prepareVault, captureBoth, troubleAfterCapture}};
}

} // namespace

class CueVaultFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holdsWholeEntriesWhateverCallFails();
};

void CueVaultFaultsTest::holdsWholeEntriesWhateverCallFails()
{
    const Interruption what = cases().first();
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls >= 9, qPrintable(QString::number(report.calls)));
    }
}

TARNWICK_FAULT_LOOP_MAIN(CueVaultFaultsTest, cases)
#include "cue_vault_faults_test.moc"
