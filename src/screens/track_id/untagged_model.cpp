#include "screens/track_id/untagged_model.h"

#include "screens/components/tint.h"
#include "screens/components/track_line_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QVariant UntaggedModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    if (role == KeyRole)
        return keys().at(place);
    const bool isTrack = size_t(place) < m_rows.size();
    if (role == MoreRole)
        return isTrack ? QString() : u"+ %1 more — tag these first, then rescan."_s.arg(m_more);
    return ofTrack(isTrack ? m_rows[size_t(place)] : Row(), role);
}

QVariant UntaggedModel::ofTrack(const Row &row, int role) const
{
    const GenreSuggestion suggestion = row.suggestion.value_or(GenreSuggestion());
    switch (role) {
    case FirstRole:
        return TrackLineText::first(row.track.track);
    case SecondRole:
        return TrackLineText::second(row.track.track);
    case PathRole:
        return row.track.track.relativePath.isEmpty() ? QString() : row.track.track.absolutePath();
    case ConfidenceRole:
        return row.suggestion ? u"%1%"_s.arg(suggestion.confidence) : QString();
    case TintRole:
        return int(suggestion.isSure() ? Tint::Good : Tint::Warn);
    case GenreRole:
        return suggestion.genre;
    case ActsRole:
        return row.suggestion.has_value();
    default:
        return {};
    }
}

QHash<int, QByteArray> UntaggedModel::roleNames() const
{
    return {{KeyRole, "key"},     {FirstRole, "first"}, {SecondRole, "second"},
            {PathRole, "path"},   {TintRole, "tint"},   {ConfidenceRole, "confidence"},
            {GenreRole, "genre"}, {ActsRole, "acts"},   {MoreRole, "more"}};
}

void UntaggedModel::setRows(std::vector<Row> rows, size_t more)
{
    m_rows = std::move(rows);
    m_more = more;
    QStringList keys;
    keys.reserve(qsizetype(m_rows.size()) + 1);
    for (const Row &row : m_rows)
        keys.append(row.track.track.relativePath);
    // No file lies at an empty path.
    if (m_more > 0)
        keys.append(QString());
    setKeys(distinct(keys));
}

const UntaggedModel::Row *UntaggedModel::rowOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    return place < 0 || size_t(place) >= m_rows.size() ? nullptr : &m_rows[size_t(place)];
}

} // namespace tarnwick
