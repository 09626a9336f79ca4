#pragma once

#include <functional>
#include <string>
#include <vector>

/// Holding the program against a floor: the least that any program would have to do for the same.
namespace tarnwick::bench {

/// Something whose time is taken.
struct Work
{
    std::function<void()> run;     ///< timed
    std::function<void()> prepare; ///< called ahead of each run, not timed; may be empty

    template <typename Run>
    Work(Run timed, std::function<void()> untimed = {})
        : run(std::move(timed))
        , prepare(std::move(untimed))
    {}
};

/// The comparisons of one executable. Run without options it prints a line for each: name, floor,
/// ours, ratio, goal; the times are medians in milliseconds.
///
///     int main(int argc, char **argv)
///     {
///         bench::Ratios ratios(argc, argv);
///         ratios.compare("read it all", [&] { floor(); }, [&] { ours(); }, 1.3);
///         return ratios.finish();
///     }
class Ratios
{
public:
    /// Takes `--strict`, `--rounds=N`, and the options of Google Benchmark.
    Ratios(int argc, char **argv);

    /// Runs `floor` and `ours` in turn, 9 rounds after a warm-up, and prints their line. `goal` is
    /// the highest ratio that is still good.
    void compare(const std::string &name, Work floor, Work ours, double goal);

    /// The status for main(): 1 if a goal was missed under `--strict`, else 0. Where an option of
    /// Google Benchmark was given, runs the works under it instead.
    int finish();

private:
    struct Medians
    {
        double floor;
        double ours;
    };

    Medians measure(const Work &floor, const Work &ours) const;

    std::vector<char *> m_arguments; ///< those left for Google Benchmark
    int m_rounds = 9;
    bool m_strict = false;
    bool m_goalMissed = false;
    bool m_headPrinted = false;
};

} // namespace tarnwick::bench
