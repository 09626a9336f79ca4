#include "screens/crate_hygiene/hygiene_figures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::HygieneFigures {

namespace {

const QString wideDot = u"  ·  "_s;

} // namespace

QString percent(const CrateHygiene::Overlap &overlap)
{
    return QString::number(overlap.percent) + u'%';
}

QString crates(const CrateHygiene::Overlap &overlap)
{
    return overlap.a.name + wideDot + overlap.b.name;
}

QString shared(const CrateHygiene::Overlap &overlap)
{
    return u"%1 shared tracks · %2 / %3"_s.arg(overlap.shared)
        .arg(overlap.a.count())
        .arg(overlap.b.count());
}

QString orphansTitle(int orphanCount)
{
    return orphanCount == 0 ? u"Every track lives in a crate"_s
                            : u"%1 tracks aren't in any crate"_s.arg(orphanCount);
}

QString fileTitle(int orphanCount)
{
    return u"File %1"_s.arg(orphanCount);
}

QStringList orphanPaths(const CrateHygiene &hygiene)
{
    QStringList paths(hygiene.orphanPaths.begin(), hygiene.orphanPaths.end());
    std::sort(paths.begin(), paths.end());
    return paths;
}

QString spellings(const CrateHygiene::GenreVariant &variant)
{
    return variant.variants.join(wideDot);
}

QString plan(const CrateHygiene::GenreVariant &variant)
{
    return u"%1 tracks → standardise on “%2”"_s.arg(QString::number(variant.trackCount),
                                                    variant.canon);
}

QString unifyTitle(const CrateHygiene::GenreVariant &variant)
{
    return u"Unify to "_s + variant.canon;
}

} // namespace tarnwick::HygieneFigures
