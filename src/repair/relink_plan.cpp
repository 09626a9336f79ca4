#include "repair/relink_plan.h"

#include "foundation/paths.h"

using namespace Qt::StringLiterals;

namespace tarnwick::RelinkPlan {

QString relativePathOf(const QUrl &file)
{
    return withoutLeadingSlash(file.toLocalFile());
}

QString relinkReason(const SeratoTrack &track)
{
    return u"Before: relink "_s + track.fileName();
}

QString dropReason(const SeratoTrack &track)
{
    return u"Before: drop "_s + track.fileName();
}

ChangeLog::Change relinked(const SeratoTrack &track, const QString &newPath)
{
    return {.kind = ChangeEntry::Kind::Relink,
            .target = track.fileName(),
            .detail =
                u"Relinked to %1 — cues and grids carried over"_s.arg(lastPathComponent(newPath)),
            .before = track.relativePath,
            .after = newPath};
}

ChangeLog::Change dropped(const SeratoTrack &track)
{
    return {.kind = ChangeEntry::Kind::Dedupe,
            .target = track.fileName(),
            .detail = u"Removed dead library entry (file was already missing)"_s,
            .before = track.relativePath};
}

} // namespace tarnwick::RelinkPlan
