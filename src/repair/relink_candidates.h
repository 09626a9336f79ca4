#pragma once

#include "serato/serato_track.h"

#include <QList>
#include <QUrl>
#include <QUuid>

/// The search for the place to which a missing file has moved.
namespace tarnwick::RepairEngine {

/// A place where a missing file might be.
struct Candidate
{
    QUuid id = freshIdentity();
    QUrl url;
    int confidence = 0; ///< at most 100
    QString reason;     ///< why it is offered, for the user

    /// The name of the volume on which the file lies.
    QString drive() const;
};

/// The best places, best first; of equal ones those of the very file name first, then in path
/// order. Walks the disks: for a background task.
QList<Candidate> relinkCandidates(const SeratoTrack &track, int limit = 6);

/// The same over what a search for the file name and for its stem has found.
QList<Candidate> rankedCandidates(const SeratoTrack &track, const QStringList &found, int limit);

} // namespace tarnwick::RepairEngine
