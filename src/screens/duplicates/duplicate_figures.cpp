#include "screens/duplicates/duplicate_figures.h"

#include "foundation/byte_format.h"

using namespace Qt::StringLiterals;

namespace tarnwick::DuplicateFigures {

QString copies(const DuplicateGroup &group)
{
    return u"%1 copies"_s.arg(group.members.size());
}

QString reclaimable(const DuplicateGroup &group)
{
    return ByteFmt::string(group.reclaimableBytes) + u" reclaimable"_s;
}

QStringList tagsOf(const ScannedTrack &member)
{
    QStringList tags;
    if (member.hasBeatGrid)
        tags.append(u"grid"_s);
    if (member.hasMarkers)
        tags.append(u"cues"_s);
    tags.append(u"%1k"_s.arg(member.track.bitrateKbps()));
    return tags;
}

} // namespace tarnwick::DuplicateFigures
