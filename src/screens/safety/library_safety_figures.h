#pragma once

#include "serato/serato_library.h"

#include <optional>

/// How libraries and the steps to a first change stand.
namespace tarnwick::LibrarySafetyFigures {

enum class LocationState { Offline, NoDatabase, Loaded, Ready };

/// `loaded` is the library of the present scan result.
LocationState stateOf(const SeratoLibrary::Location &location,
                      const std::optional<SeratoLibrary::Location> &loaded);
QString symbolOf(LocationState state);
QString textOf(LocationState state);

/// What the safety steps look at.
struct Standing
{
    bool hasFigures = false; ///< of a scanned library
    bool seratoRunning = false;
    bool hasResult = false;
    bool hasSnapshot = false;
};

/// Whether a step is done; the steps stand in Safety::steps().
bool isDone(qsizetype step, const Standing &standing);
/// The step that a first snapshot is.
constexpr qsizetype snapshotStep = 3;

} // namespace tarnwick::LibrarySafetyFigures
