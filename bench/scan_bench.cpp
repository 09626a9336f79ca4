// The reading path: probing tags, a database into records, and a whole scan up to the score. Also
// says how much memory the result of a scan takes.

#include "analysis/derived.h"
#include "analysis/library_scanner.h"
#include "floors/library_floors.h"
#include "floors/plain_reading.h"
#include "ratio.h"
#include "serato/serato_parser.h"
#include "support/library_on_disk.h"
#include "tags/serato_tags.h"

#include <benchmark/benchmark.h>

#include <cstdio>

#include <malloc.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int libraryTracks = 100'000;
constexpr int smallTag = 4'000;
constexpr int largeTag = 500'000;

void compareProbe(bench::Ratios &ratios, const char *name, int files, int tagBytes, double goal)
{
    const QTemporaryDir folder(bench::templateInMemory());
    const auto paths = bench::writeTaggedFiles(folder.path(), files, tagBytes);
    QStringList names;
    for (const std::string &path : paths)
        names.append(QString::fromStdString(path));
    ratios.compare(
        name, [&] { benchmark::DoNotOptimize(bench::readTags(paths, size_t(tagBytes) + 10)); },
        [&] {
            int found = 0;
            for (const QString &path : names)
                found += SeratoTags::presenceInRegularFile(path).has_value() ? 1 : 0;
            if (found != files)
                qFatal("a file was not probed");
        },
        goal);
}

SeratoLibrary::Location locationOf(const bench::LibraryOnDisk &library)
{
    return {u"Bench"_s, QUrl::fromLocalFile(library.seratoFolder()), true, true};
}

ScanResult scan(const bench::LibraryOnDisk &library)
{
    auto result = LibraryScanner::scan(locationOf(library), LibraryScanner::ReadTags::Yes,
                                       [](const ScanProgress &) {});
    if (!result || result->total() != libraryTracks)
        qFatal("the scan went wrong");
    return std::move(*result);
}

/// All that a reading path can't do without, each step as plain as can be.
size_t plainReadingPath(const bench::LibraryOnDisk &library, const ScanResult &scanned)
{
    const std::vector<char> image = bench::readWhole(library.database().toStdString());
    return bench::walkRecords(image.data(), image.size()) +
           bench::statAndReadTags(library.files(), smallTag + 10) +
           size_t(bench::flatGrouping(scanned.tracks));
}

size_t bytesInUse()
{
    const auto heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

} // namespace

int main(int argc, char **argv)
{
    bench::Ratios ratios(argc, argv);
    compareProbe(ratios, "probe, 20,000 files with 4 KB tags", 20'000, smallTag, 1.3);
    compareProbe(ratios, "probe, 1,000 files with 500 KB tags", 1'000, largeTag, 1.6);

    const bench::LibraryOnDisk library(libraryTracks, smallTag);
    const std::vector<char> image = bench::readWhole(library.database().toStdString());
    const QByteArrayView bytes(image.data(), qsizetype(image.size()));
    ratios.compare(
        "database into records",
        [&] { benchmark::DoNotOptimize(bench::walkRecords(image.data(), image.size())); },
        [&] { benchmark::DoNotOptimize(SeratoParser::tracksIn(bytes).size()); }, 9.0);

    const size_t before = bytesInUse();
    const ScanResult scanned = scan(library);
    const size_t perTrack = (bytesInUse() - before) / libraryTracks;
    ratios.compare(
        "database read to score",
        [&] { benchmark::DoNotOptimize(plainReadingPath(library, scanned)); },
        [&] {
            auto result = std::make_shared<const ScanResult>(scan(library));
            benchmark::DoNotOptimize(Derived(result).score);
        },
        2.0);
    std::printf("a database of %.1f MB; the scan result takes %zu bytes a track (goal 1100)\n",
                double(image.size()) / 1e6, perTrack);
    return ratios.finish();
}
