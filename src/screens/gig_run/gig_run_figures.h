#pragma once

#include "analysis/derived.h"
#include "repair/gain_item.h"

#include <QStringList>

#include <variant>
#include <vector>

/// The steps of a gig run and the sheet at its end.
namespace tarnwick::GigRunFigures {

/// In the order in which they run.
enum class Step { Relink, Grids, Keys, Level, Dedupe, Stems, EngineStick, Verify };

inline constexpr int stepCount = 8;

/// The titles, in that order.
const QStringList &titles();

/// Not begun yet.
struct StepPending
{
    bool operator==(const StepPending &) const = default;
};

/// Under way.
struct StepRunning
{
    bool operator==(const StepRunning &) const = default;
};

/// Ended, with nothing left to do.
struct StepDone
{
    QString text;

    bool operator==(const StepDone &) const = default;
};

/// Ended, with something left to the user.
struct StepSkipped
{
    QString text;

    bool operator==(const StepSkipped &) const = default;
};

using StepState = std::variant<StepPending, StepRunning, StepDone, StepSkipped>;
/// How a step has ended.
using Outcome = std::variant<StepDone, StepSkipped>;

StepState stateOf(const Outcome &outcome);
bool isDone(const Outcome &outcome);
/// The line that says how a step stands.
QString statusOf(const StepState &state);
/// Name of the symbol that stands for a state; none where the step's number does.
QString symbolOf(const StepState &state);

/// What the run is about to go over.
QString summary(int tracks, qsizetype crates);
/// What the button of the run says.
QString runTitle(bool running);

/// What a step says that fixes nothing: what it found, or that there is nothing to find.
Outcome findings(Step step, const Derived &derived);

/// Tracks to be levelled, each with its gain; empty where all are even.
std::vector<GainItem> levelling(const Derived &derived);
QString levelled(size_t tracks);
QString deduplicated(int copies);

/// The figures of the sheet, over the tracks on disk.
struct SetSheet
{
    int tracks = 0;
    int crates = 0;    ///< of the library
    QString length;    ///< "59m" or "1h 1m"
    QString tempoPath; ///< slowest and fastest in beats a minute; empty without a tempo
    int keys = 0;      ///< distinct ones

    bool operator==(const SetSheet &) const = default;
};

SetSheet setSheet(const ScanResult &result, int crateCount);

} // namespace tarnwick::GigRunFigures
