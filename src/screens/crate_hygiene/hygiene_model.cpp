#include "screens/crate_hygiene/hygiene_model.h"

#include "screens/components/tint.h"
#include "screens/crate_hygiene/hygiene_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QVariant HygieneModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0 || role < KeyRole)
        return {};
    const Row &row = m_rows[size_t(place)];
    switch (role) {
    case KeyRole:
        return keys().at(place);
    case TintRole:
        return row.kind == Orphans && m_hygiene->orphanCount == 0 ? Tint::Good : Tint::Warn;
    case OpensRole:
        return row.kind == OverlapHead || row.kind == GenreHead || row.kind == Orphans;
    case ClosesRole:
        return closes(row);
    case RuledRole:
        return (row.kind == Overlap || row.kind == Variant) && row.entry > 0;
    case ActsRole:
        return !data(index, ActionRole).toString().isEmpty();
    default:
        return textData(row, role);
    }
}

QVariant HygieneModel::textData(const Row &row, int role) const
{
    switch (row.kind) {
    case OverlapHead:
        return role == HeadingRole ? u"Near-duplicate crates"_s : QString();
    case NoOverlaps:
        return role == PraiseRole ? u"No crates overlap enough to merge."_s : QString();
    case Overlap:
        return overlapData(m_hygiene->overlaps[row.entry], role);
    case Orphans:
        return orphansData(role);
    case GenreHead:
        return role == HeadingRole ? u"Genre spelling variants"_s : QString();
    case NoVariants:
        return role == PraiseRole ? u"Genres are spelled consistently."_s : QString();
    case Variant:
        return variantData(m_hygiene->genreVariants[row.entry], role);
    }
    Q_UNREACHABLE();
}

QVariant HygieneModel::overlapData(const CrateHygiene::Overlap &overlap, int role) const
{
    switch (role) {
    case LeadRole:
        return HygieneFigures::percent(overlap);
    case TitleRole:
        return HygieneFigures::crates(overlap);
    case DetailRole:
        return HygieneFigures::shared(overlap);
    case ActionRole:
        return u"Merge"_s;
    default:
        return QString();
    }
}

QVariant HygieneModel::orphansData(int role) const
{
    const int count = m_hygiene->orphanCount;
    switch (role) {
    case SymbolRole:
        return u"tray"_s;
    case TitleRole:
        return HygieneFigures::orphansTitle(count);
    case DetailRole:
        return u"Filing loose tracks into an Unsorted crate makes them easy to find and place."_s;
    case ActionRole:
        return count == 0 ? QString() : HygieneFigures::fileTitle(count);
    case ActionSymbolRole:
        return u"tray.and.arrow.down"_s;
    default:
        return QString();
    }
}

QVariant HygieneModel::variantData(const CrateHygiene::GenreVariant &variant, int role) const
{
    switch (role) {
    case TitleRole:
        return HygieneFigures::spellings(variant);
    case DetailRole:
        return HygieneFigures::plan(variant);
    case ActionRole:
        return HygieneFigures::unifyTitle(variant);
    default:
        return QString();
    }
}

bool HygieneModel::closes(const Row &row) const
{
    switch (row.kind) {
    case OverlapHead:
    case GenreHead:
        return false;
    case Overlap:
        return row.entry + 1 == m_hygiene->overlaps.size();
    case Variant:
        return row.entry + 1 == m_hygiene->genreVariants.size();
    case NoOverlaps:
    case Orphans:
    case NoVariants:
        return true;
    }
    Q_UNREACHABLE();
}

QHash<int, QByteArray> HygieneModel::roleNames() const
{
    return {{KeyRole, "key"},     {HeadingRole, "heading"}, {PraiseRole, "praise"},
            {LeadRole, "lead"},   {SymbolRole, "symbol"},   {TintRole, "tint"},
            {TitleRole, "title"}, {DetailRole, "detail"},   {ActionRole, "action"},
            {OpensRole, "opens"}, {ClosesRole, "closes"},   {ActionSymbolRole, "actionSymbol"},
            {RuledRole, "ruled"}, {ActsRole, "acts"}};
}

void HygieneModel::add(const Row &row, const QString &key, QStringList &keys)
{
    m_rows.push_back(row);
    keys.append(key);
}

void HygieneModel::setHygiene(std::shared_ptr<const CrateHygiene> hygiene)
{
    m_hygiene = std::move(hygiene);
    m_rows.clear();
    QStringList keys;
    if (m_hygiene) {
        add({OverlapHead, 0}, u"crates"_s, keys);
        if (m_hygiene->overlaps.empty())
            add({NoOverlaps, 0}, u"no overlaps"_s, keys);
        for (size_t i = 0; i < m_hygiene->overlaps.size(); ++i) {
            const CrateHygiene::Overlap &overlap = m_hygiene->overlaps[i];
            add({Overlap, i}, overlap.a.id() + u'\n' + overlap.b.id(), keys);
        }
        add({Orphans, 0}, u"orphans"_s, keys);
        add({GenreHead, 0}, u"genres"_s, keys);
        if (m_hygiene->genreVariants.empty())
            add({NoVariants, 0}, u"no variants"_s, keys);
        for (size_t i = 0; i < m_hygiene->genreVariants.size(); ++i)
            add({Variant, i}, u"genre\n"_s + m_hygiene->genreVariants[i].canon, keys);
    }
    setKeys(keys);
}

std::optional<HygieneModel::Row> HygieneModel::rowOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    return place < 0 ? std::nullopt : std::optional(m_rows[size_t(place)]);
}

} // namespace tarnwick
