// Repairs in a library of 100,000 tracks: one edit of its database, a command with everything
// around that edit, the look whether Serato runs, and the search for files that have moved.

#include "app/app_state.h"
#include "floors/plain_looking.h"
#include "floors/plain_writing.h"
#include "platform/file_search.h"
#include "ratio.h"
#include "safety/store.h"
#include "serato/serato_document.h"
#include "support/library_on_disk.h"
#include "support/memory.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int tracks = 100'000;
constexpr int filesToSearch = 500'000;
constexpr int filesPerFolder = 10;
constexpr double megabyte = 1e6;

/// As deep as those of real libraries, so that the database has their size.
const QString tracksFolder = u"Users/someone/Music/Electronic/2026/Some Artist - Some Album"_s;

/// Another one at each call, so that there is always something to change.
QString nextGenre()
{
    static int count = 0;
    return u"Genre %1"_s.arg(++count % 10);
}

void editOnce(const QString &database)
{
    auto document = SeratoDocument::read(database);
    const bool isEdited =
        document && document->setText(tracksFolder + u"/50000.mp3"_s, "tgen"_tag, nextGenre());
    if (!isEdited || !document->write(database))
        qFatal("the edit went wrong");
}

/// The home library of a user of this program's own.
QString makeHomeLibrary(const QTemporaryDir &home)
{
    const QString folder = home.filePath(u"Music/_Serato_"_s);
    QDir().mkpath(folder);
    QFile file(folder + u"/database V2"_s);
    const QByteArray image = bench::databaseImage(tracks, tracksFolder);
    if (!file.open(QIODevice::WriteOnly) || file.write(image) != image.size())
        qFatal("the database can't be written");
    return file.fileName();
}

void measureEdit(bench::Ratios &ratios, const QString &database)
{
    const double size = double(QFileInfo(database).size());
    ::malloc_trim(0); // what an earlier step has freed must not serve the edit
    bench::resetPeakMemory();
    const double before = bench::peakMemory();
    editOnce(database);
    std::printf("%-40s %.0f MB, peak that and %.0f MB (goal 60)\n", "one edit", size / megabyte,
                (bench::peakMemory() - before - size) / megabyte);
    const std::string plain = database.toStdString();
    ratios.compare(
        "one edit", [&] { bench::rewriteWhole(plain); }, [&] { editOnce(database); }, 1.4);
}

void waitUntilIdle(AppState &app)
{
    while (app.pendingTasks() > 0) {
        QEventLoop loop;
        QObject::connect(&app, &AppState::becameIdle, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

void measureCommand(bench::Ratios &ratios, const QString &database)
{
    AppState app(AppState::Environment::Ignored);
    app.rescan();
    waitUntilIdle(app);
    if (!app.canWrite() || app.result()->total() != tracks)
        qFatal("the library was not scanned");
    const std::string plain = database.toStdString();
    const ScannedTrack track = app.result()->tracks[tracks / 2];
    const auto edit = [&] {
        const auto entries = app.changeLog().entries().size();
        app.setGenre(track, nextGenre());
        if (app.changeLog().entries().size() != entries + 1)
            qFatal("the command went wrong");
    };
    std::shared_ptr<const ScanResult> seen;
    const auto forget = [&] {
        seen.reset();
        QDir(Store::snapshots()).removeRecursively();
    };
    ratios.compare(
        "an edit command", [&] { bench::rewriteWhole(plain); }, bench::Work(edit, forget), 2.0);
    // The result of the scan must then be copied, since it stays as it was for the one who holds
    // it.
    ratios.compare(
        "the same with the library on show", [&] { bench::rewriteWhole(plain); },
        bench::Work(edit,
                    [&] {
                        forget();
                        seen = app.result();
                    }),
        2.0);
}

void measureRunningCheck(bench::Ratios &ratios)
{
    constexpr int times = 20; // in one round, since one look is over before the clock ticks
    ratios.compare(
        "running check, 20 times",
        [] {
            for (int i = 0; i < times; ++i)
                benchmark::DoNotOptimize(bench::readProcessNames());
        },
        [] {
            for (int i = 0; i < times; ++i)
                benchmark::DoNotOptimize(SeratoLibrary::isSeratoRunning());
        },
        3.0);
}

/// Empty files in folders of albums in folders of artists.
void makeMusic(const QString &root)
{
    const QByteArray base = root.toUtf8();
    for (int i = 0; i < filesToSearch; ++i) {
        const int album = i / filesPerFolder;
        const QString folder = u"%1/Artist %2/Album %3"_s.arg(root).arg(album / 10).arg(album);
        if (i % filesPerFolder == 0)
            QDir().mkpath(folder);
        const QByteArray file = u"%1/%2 Some Title.mp3"_s.arg(folder).arg(i).toUtf8();
        const int made = ::open(file.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
        if (made < 0)
            qFatal("the files to search can't be made");
        ::close(made);
    }
}

void measureSearch(bench::Ratios &ratios)
{
    const QTemporaryDir music(bench::templateInMemory());
    makeMusic(music.path());
    const platform::FileSearch search{{music.path()}, {}, {u"mp3"_s, u"wav"_s, u"flac"_s}};
    const std::string root = music.path().toStdString();
    ratios.compare(
        "file search, 500,000 files", [&] { benchmark::DoNotOptimize(bench::walkFolders(root)); },
        [&] {
            const auto found =
                platform::findFiles(search, {u"4711 Some Title.mp3"_s, u"4711 Some Title"_s});
            if (found[0].isEmpty() || found[0] != found[1])
                qFatal("the search went wrong");
        },
        2.5);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(u"data"_s).toUtf8());
    const QString database = makeHomeLibrary(home);

    bench::Ratios ratios(argc, argv);
    measureEdit(ratios, database);
    measureCommand(ratios, database);
    measureRunningCheck(ratios);
    measureSearch(ratios);
    return ratios.finish();
}
