#include "ratio.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tarnwick::bench {

namespace {

double millisecondsOf(const Work &work)
{
    if (work.prepare)
        work.prepare();
    const auto start = std::chrono::steady_clock::now();
    work.run();
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    return taken.count();
}

double median(std::vector<double> times)
{
    const auto middle = times.begin() + ptrdiff_t(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

void registerWork(const std::string &name, Work work)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [work = std::move(work)](benchmark::State &state) {
                                     for ([[maybe_unused]] auto _ : state)
                                         state.SetIterationTime(millisecondsOf(work) / 1000.0);
                                 })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

Ratios::Ratios(int argc, char **argv)
{
    for (int i = 0; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--strict")
            m_strict = true;
        else if (argument.starts_with("--rounds="))
            m_rounds = std::max(1, std::atoi(argv[i] + argument.find('=') + 1));
        else
            m_arguments.push_back(argv[i]);
    }
}

void Ratios::compare(const std::string &name, Work floor, Work ours, double goal)
{
    if (m_arguments.size() > 1) {
        registerWork(name + "/floor", std::move(floor));
        registerWork(name + "/ours", std::move(ours));
        return;
    }
    if (!std::exchange(m_headPrinted, true))
        std::printf("%-40s %10s %10s %7s %7s\n", "", "floor ms", "ours ms", "ratio", "goal");
    const Medians medians = measure(floor, ours);
    const double ratio = medians.ours / medians.floor;
    std::printf("%-40s %10.2f %10.2f %7.2f %7.2f%s\n", name.c_str(), medians.floor, medians.ours,
                ratio, goal, ratio > goal ? "  MISSED" : "");
    std::fflush(stdout);
    m_goalMissed |= ratio > goal;
}

Ratios::Medians Ratios::measure(const Work &floor, const Work &ours) const
{
    std::vector<double> floorTimes;
    std::vector<double> ourTimes;
    constexpr int warmUps = 2;
    for (int round = -warmUps; round < m_rounds; ++round) {
        const double floorTime = millisecondsOf(floor);
        const double ourTime = millisecondsOf(ours);
        if (round < 0)
            continue;
        floorTimes.push_back(floorTime);
        ourTimes.push_back(ourTime);
    }
    return {median(floorTimes), median(ourTimes)};
}

int Ratios::finish()
{
    int count = int(m_arguments.size());
    if (count > 1) {
        benchmark::Initialize(&count, m_arguments.data());
        if (benchmark::ReportUnrecognizedArguments(count, m_arguments.data()))
            return 1;
        benchmark::RunSpecifiedBenchmarks();
    }
    return m_strict && m_goalMissed ? 1 : 0;
}

} // namespace tarnwick::bench
