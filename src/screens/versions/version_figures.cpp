#include "screens/versions/version_figures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::VersionFigures {

QString cuts(const VersionGroup &group)
{
    return u"%1 cuts"_s.arg(group.members.size());
}

QString plays(quint64 plays)
{
    return QString::number(plays) + (plays == 1 ? u" play"_s : u" plays"_s);
}

QUuid suggestedKeeper(const VersionGroup &group)
{
    const auto most = std::max_element(
        group.members.begin(), group.members.end(),
        [](const VersionMember &a, const VersionMember &b) { return a.plays() < b.plays(); });
    return most == group.members.end() ? QUuid() : most->id();
}

} // namespace tarnwick::VersionFigures
