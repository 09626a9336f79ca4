// What the safety layer adds to a write and to the launch: the snapshot of a library of 100,000
// tracks and 300 crates, an entry more in a log of 20,000, and a vault of 50,000 files' cues.

#include "floors/plain_stores.h"
#include "ratio.h"
#include "safety/change_log.h"
#include "safety/cue_vault.h"
#include "safety/snapshot_store.h"
#include "safety/store.h"
#include "support/library_on_disk.h"
#include "support/memory.h"
#include "tags/serato_geob.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int tracks = 100'000;
constexpr int crates = 300;
constexpr int logEntries = 20'000;
constexpr int vaultEntries = 50'000;

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s can't be written", qUtf8Printable(path));
}

std::vector<std::string_view> viewsOf(const std::vector<std::string> &texts)
{
    return {texts.begin(), texts.end()};
}

/// Snapshots of a library, with and without its crates.
void measureSnapshots(bench::Ratios &ratios, const QTemporaryDir &folder)
{
    const QString serato = folder.filePath(u"_Serato_"_s);
    const QString copy = folder.filePath(u"copy"_s);
    QDir().mkpath(serato);
    write(serato + u"/database V2"_s, bench::databaseImage(tracks, u"Music"_s));
    const SeratoLibrary::Location library{u"Bench"_s, QUrl::fromLocalFile(serato), true, true};

    const auto compare = [&](const char *name, const QStringList &items) {
        ratios.compare(name,
                       bench::Work(
                           [&] {
                               for (const QString &item : items)
                                   bench::copyInKernel((serato + u'/' + item).toStdString(),
                                                       (copy + u'/' + item).toStdString());
                           },
                           [&] {
                               QDir(copy).removeRecursively();
                               QDir().mkpath(copy);
                           }),
                       bench::Work(
                           [&] {
                               if (!SnapshotStore::create(library, u"bench"_s))
                                   qFatal("no snapshot can be taken");
                           },
                           [&] { QDir(Store::snapshots()).removeRecursively(); }),
                       1.5);
    };
    compare("snapshot of a database of 59 MB", {u"database V2"_s});
    QDir().mkpath(serato + u"/Subcrates"_s);
    for (int i = 0; i < crates; ++i)
        write(serato + u"/Subcrates/%1.crate"_s.arg(i), QByteArray(2000 + 37 * i, 'c'));
    compare("the same with 300 crates", {u"database V2"_s, u"Subcrates"_s});
    QDir(Store::snapshots()).removeRecursively();
}

void measureLog(bench::Ratios &ratios, const QTemporaryDir &folder)
{
    const ChangeLog::Change change{.kind = ChangeEntry::Kind::Tag,
                                   .target = u"Some Artist - Some Title (Extended Mix).mp3"_s,
                                   .detail = u"Genre set to “Melodic House & Techno”"_s,
                                   .before = u"House"_s,
                                   .after = u"Melodic House & Techno"_s,
                                   .snapshotId = u"snap-20261120-140500-123"_s};
    ChangeLog log;
    const ChangeEntry first = log.append(change);
    const std::string text = StoreFile::encoded(first).toStdString();
    const std::vector<std::string> texts(logEntries, text);
    QByteArrayList copies(logEntries, QByteArray::fromStdString(text));
    write(Store::changeLog(), StoreFile::listOf(copies));
    ChangeLog large;
    if (large.entries().size() != logEntries)
        qFatal("the log was not read");

    const auto views = viewsOf(texts);
    const std::string plain = folder.filePath(u"log"_s).toStdString();
    ratios.compare(
        "log append, 20,000 entries", [&] { bench::joinAndWrite(views, plain); },
        [&] { (void)large.append(change); }, 5.0);
}

/// An audio file with 4 KB of cues.
QByteArray fileWithCues()
{
    SeratoGEOB::Tag tag;
    const QByteArray texts("\0application/octet-stream\0\0Serato Markers2\0", 43);
    tag.frames.push_back({u"GEOB"_s, {}, texts + QByteArray(4000, 'c')});
    return SeratoGEOB::serialize(tag);
}

/// A vault of entries of about 3 KB, and one audio file whose cues can be captured anew.
void measureVault(bench::Ratios &ratios, const QTemporaryDir &folder)
{
    QByteArray file = "{";
    std::vector<std::string> texts;
    for (int i = 0; i < vaultEntries; ++i) {
        const QByteArray frame(1600 + i % 200, char(i));
        const CueEntry entry(
            {{u"Serato Markers2"_s, frame}, {u"Serato BeatGrid"_s, frame.first(700)}},
            QDateTime::fromSecsSinceEpoch(1'795'176'000, Qt::UTC), quint64(i));
        const QByteArray key =
            "\"Users/dj/Music/Some Artist " + QByteArray::number(i) + "/Some Title.mp3\": ";
        texts.push_back((key + entry.text().toByteArray()).toStdString());
        file += (i ? ",\n  " : "\n  ") + key + entry.text().toByteArray();
    }
    file += "\n}\n";
    write(Store::cueVault(), file);
    const double bytes = double(file.size());
    file = {};

    const std::string path = Store::cueVault().toStdString();
    bench::resetPeakMemory();
    const double before = bench::peakMemory();
    std::optional<CueVault> vault(std::in_place);
    if (vault->entries()->size() != vaultEntries)
        qFatal("the vault was not read");
    std::printf("%-40s %.0f MB, peak %.2f times that (goal 2.3)\n", "cue vault", bytes / 1e6,
                (bench::peakMemory() - before) / bytes);
    ratios.compare(
        "cue vault, load", [&] { (void)bench::readAndFindMarks(path); },
        bench::Work([&] { (void)vault.emplace().entries(); }, [&] { vault.reset(); }), 2.0);

    ScannedTrack track;
    track.track.relativePath = folder.filePath(u"0.mp3"_s).sliced(1);
    track.existsOnDisk = track.hasMarkers = true;
    write(folder.filePath(u"0.mp3"_s), fileWithCues());
    const auto views = viewsOf(texts);
    const std::string plain = folder.filePath(u"vault"_s).toStdString();
    ratios.compare(
        "cue vault, capture and save", [&] { bench::joinAndWrite(views, plain); },
        [&] {
            ++track.onDiskSizeBytes; // so that there is something new
            if (vault->capture(std::span(&track, 1)) != 1)
                qFatal("nothing was captured");
        },
        2.5);
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    qputenv("XDG_DATA_HOME", folder.filePath(u"data"_s).toUtf8());
    bench::Ratios ratios(argc, argv);
    measureSnapshots(ratios, folder);
    measureLog(ratios, folder);
    measureVault(ratios, folder);
    return ratios.finish();
}
