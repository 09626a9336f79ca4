// The exports of 100,000 tracks and 300 crates of 100 entries each.

#include "export/engine_exporter.h"
#include "export/rekordbox_exporter.h"
#include "floors/export_floors.h"
#include "ratio.h"
#include "support/generated_library.h"

#include <QTemporaryDir>

#include <random>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

QList<LoadedCrate> cratesOf(const std::vector<ScannedTrack> &tracks)
{
    std::mt19937 random(7);
    QList<LoadedCrate> crates;
    for (int i = 0; i < 300; ++i) {
        QStringList paths;
        for (int entry = 0; entry < 100; ++entry)
            paths.append(tracks[random() % tracks.size()].track.relativePath);
        crates.append({.name = u"Crate %1"_s.arg(i), .url = {}, .paths = paths});
    }
    return crates;
}

void demand(const Result<ExportOutcome> &outcome)
{
    if (!outcome)
        qFatal("%s", qUtf8Printable(outcome.error().message));
}

} // namespace

int main(int argc, char **argv)
{
    const auto library = bench::generatedLibrary(100'000);
    const QList<LoadedCrate> crates = cratesOf(library->tracks);
    const bench::PlainLibrary plain = bench::plainLibrary(library->tracks, crates);
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    const auto ignore = [](const ExportProgress &) {};

    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "rekordbox export", [&] { bench::writeCollection(plain, path); },
        [&] {
            demand(RekordboxExporter::exportTo(library->tracks, crates, folder.path(), ignore));
        },
        2.5);
    ratios.compare(
        "Engine export", [&] { bench::writeDatabase(plain, path); },
        [&] { demand(EngineExporter::exportTo(library->tracks, crates, folder.path(), ignore)); },
        1.3);
    return ratios.finish();
}
