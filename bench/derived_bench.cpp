// The score of a library: counts, duplicates and dimensions of 100,000 tracks.

#include "analysis/derived.h"
#include "floors/flat_grouping.h"
#include "ratio.h"
#include "support/generated_library.h"

#include <benchmark/benchmark.h>

using namespace tarnwick;

int main(int argc, char **argv)
{
    const auto library = bench::generatedLibrary(100'000);
    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "Derived, first read",
        [&] { benchmark::DoNotOptimize(bench::flatGrouping(library->tracks)); },
        [&] { benchmark::DoNotOptimize(Derived(library).score); }, 3.0);
    return ratios.finish();
}
