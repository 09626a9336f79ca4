// The figures of a library of 100,000 tracks: its score, its versions, its genre suggestions.

#include "analysis/derived.h"
#include "floors/library_floors.h"
#include "ratio.h"
#include "support/generated_library.h"

#include <benchmark/benchmark.h>

using namespace tarnwick;
using benchmark::DoNotOptimize;

namespace {

/// A suggestion for each track, on a value that has counted nothing yet.
int suggestAll(const Derived &derived)
{
    int suggested = 0;
    for (const ScannedTrack &scanned : derived.result().tracks)
        suggested += derived.genreSuggestion(scanned).has_value();
    return suggested;
}

} // namespace

int main(int argc, char **argv)
{
    const auto library = bench::generatedLibrary(100'000);
    const std::vector<ScannedTrack> &tracks = library->tracks;
    std::optional<Derived> derived(library);

    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "Derived, first read", [&] { DoNotOptimize(bench::flatGrouping(tracks)); },
        [&] { DoNotOptimize(Derived(library).score); }, 3.0);
    ratios.compare(
        "versionGroups", [&] { DoNotOptimize(bench::versionGrouping(tracks)); },
        [&] { DoNotOptimize(derived->versionGroups().size()); }, 2.5);
    ratios.compare(
        "genreSuggestion of every track", [&] { DoNotOptimize(bench::genreSuggestions(tracks)); },
        bench::Work([&] { DoNotOptimize(suggestAll(*derived)); },
                    [&] { derived.emplace(library); }),
        2.5);
    return ratios.finish();
}
