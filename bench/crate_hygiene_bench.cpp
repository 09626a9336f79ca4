// Overlaps of crates over a library of 100,000 tracks.

#include "analysis/crate_hygiene.h"
#include "floors/library_floors.h"
#include "ratio.h"
#include "support/generated_library.h"

#include <benchmark/benchmark.h>

using namespace tarnwick;
using benchmark::DoNotOptimize;

int main(int argc, char **argv)
{
    const auto library = bench::generatedLibrary(100'000);
    const QList<LoadedCrate> many = bench::generatedCrates(*library, 300, 500);
    const QList<LoadedCrate> veryMany = bench::generatedCrates(*library, 1'000, 300);

    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "overlaps of 300 crates", [&] { DoNotOptimize(bench::pairsThatShare(many)); },
        [&] { DoNotOptimize(CrateHygiene(many, {}).overlaps.size()); }, 2.5);
    ratios.compare(
        "overlaps of 1,000 crates", [&] { DoNotOptimize(bench::pairsThatShare(veryMany)); },
        [&] { DoNotOptimize(CrateHygiene(veryMany, {}).overlaps.size()); }, 2.5);
    return ratios.finish();
}
