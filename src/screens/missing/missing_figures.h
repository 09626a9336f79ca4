#pragma once

#include "repair/relink_candidates.h"
#include "serato/serato_track.h"

/// What is said of a missing file and of the places where it might be.
namespace tarnwick::MissingFigures {

/// How sure a candidate is, in the three colours of its badge.
enum class Sureness {
    Sure,   ///< from 95
    Likely, ///< from 80
    Vague,
};

Sureness surenessOf(int confidence);
QString badge(int confidence);

QString lastSeen(const SeratoTrack &track);
/// What the dialog says that asks for the file.
QString browseMessage(const SeratoTrack &track);
/// Where a candidate lies, and why it is offered.
QString source(const RepairEngine::Candidate &candidate);

} // namespace tarnwick::MissingFigures
