#include "repair/duplicate_plan.h"

#include "foundation/byte_format.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace tarnwick::DuplicatePlan {

std::vector<ScannedTrack> losers(const DuplicateGroup &group, const QUuid &keeperId)
{
    std::vector<ScannedTrack> found;
    std::copy_if(group.members.begin(), group.members.end(), std::back_inserter(found),
                 [&](const ScannedTrack &member) { return member.id() != keeperId; });
    return found;
}

QString reason(const DuplicateGroup &group, size_t loserCount)
{
    return u"Before: keep 1, hold %1 of %2"_s.arg(loserCount).arg(group.members.size());
}

QString holdingReason(const DuplicateGroup &group)
{
    return u"Duplicate of "_s +
           (group.members.empty() ? u"kept track"_s : group.members.front().track.displayTitle());
}

ChangeLog::Change resolved(const ScannedTrack &loser, const std::optional<QString> &holdingId)
{
    return {.kind = ChangeEntry::Kind::Dedupe,
            .target = loser.track.fileName(),
            .detail = u"Duplicate → holding (30 days). Best copy kept."_s,
            .before = loser.track.absolutePath(),
            .holdingId = holdingId};
}

QString summary(int movedFiles, quint64 bytes)
{
    return u"Kept 1, moved %1 to holding — %2 reclaimable"_s.arg(movedFiles)
        .arg(ByteFmt::string(bytes));
}

} // namespace tarnwick::DuplicatePlan
