#pragma once

#include "safety/change_log.h"
#include "serato/serato_track.h"

#include <QUrl>

/// What relinking a track and dropping a dead entry amount to.
namespace tarnwick::RelinkPlan {

/// The path of a file as a database holds it: without the leading slash.
QString relativePathOf(const QUrl &file);

QString relinkReason(const SeratoTrack &track);
QString dropReason(const SeratoTrack &track);

/// The entry of a track, as it was, that now leads to the new path.
ChangeLog::Change relinked(const SeratoTrack &track, const QString &newPath);

/// Of the kind whose undo puts a record back; without a held file, that is all it does.
ChangeLog::Change dropped(const SeratoTrack &track);

} // namespace tarnwick::RelinkPlan
