// The commands that tidy crates, cuts and genres.

#include "cli/crate_actions.h"

#include "cli/session.h"
#include "screens/crate_hygiene/hygiene_figures.h"
#include "screens/versions/version_figures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

/// The member of that path; nothing where the group has none.
std::optional<QUuid> memberAt(const VersionGroup &group, const QString &path)
{
    for (const VersionMember &member : group.members) {
        if (Session::liesAt(member.track, path))
            return member.id();
    }
    return std::nullopt;
}

bool isOfCrates(const CrateHygiene::Overlap &overlap, const QString &one, const QString &other)
{
    return (overlap.a.name == one && overlap.b.name == other) ||
           (overlap.a.name == other && overlap.b.name == one);
}

} // namespace

Status runArchiveVersions(Session &session)
{
    const QString base = session.line().arguments[0];
    const std::vector<VersionGroup> groups = session.app().derived()->versionGroups();
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [&](const VersionGroup &one) { return one.base == base; });
    if (group == groups.end())
        return Session::namesNothing(u"no versions of '%1'"_s.arg(base));
    QUuid keeper = VersionFigures::suggestedKeeper(*group);
    if (session.line().has(u"keep"_s)) {
        const QString path = session.line().value(u"keep"_s);
        const auto member = memberAt(*group, path);
        if (!member)
            return Session::namesNothing(u"no version of '%1' lies at '%2'"_s.arg(base, path));
        keeper = *member;
    }
    session.app().archiveVersions(*group, keeper);
    return session.reportToasts();
}

Status runMergeCrates(Session &session)
{
    const QString one = session.line().arguments[0];
    const QString other = session.line().arguments[1];
    const auto hygiene = session.app().hygiene();
    for (const CrateHygiene::Overlap &overlap : hygiene->overlaps) {
        if (!isOfCrates(overlap, one, other))
            continue;
        session.app().mergeCrates(overlap);
        return session.reportToasts();
    }
    return Session::namesNothing(
        u"no crates '%1' and '%2' overlap enough to merge"_s.arg(one, other));
}

Status runFileOrphans(Session &session)
{
    const QStringList orphans = HygieneFigures::orphanPaths(*session.app().hygiene());
    if (!orphans.isEmpty())
        session.app().fileOrphans(orphans);
    return session.reportToasts();
}

Status runUnifyGenre(Session &session)
{
    const QString canon = session.line().arguments[0];
    const auto hygiene = session.app().hygiene();
    for (const CrateHygiene::GenreVariant &variant : hygiene->genreVariants) {
        if (variant.canon != canon)
            continue;
        session.app().unifyGenre(variant);
        return session.reportToasts();
    }
    return Session::namesNothing(
        u"no genre with several spellings standardises on '%1'"_s.arg(canon));
}

} // namespace tarnwick::cli
