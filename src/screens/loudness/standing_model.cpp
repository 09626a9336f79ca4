#include "screens/loudness/standing_model.h"

#include "screens/components/tint.h"
#include "screens/components/track_line_figures.h"
#include "screens/loudness/loudness_figures.h"

namespace tarnwick {

QVariant StandingModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    const Row &row = m_rows[size_t(place)];
    switch (role) {
    case KeyRole:
        return keys().at(place);
    case FirstRole:
        return TrackLineText::first(row.track.track);
    case SecondRole:
        return TrackLineText::second(row.track.track);
    case PathRole:
        return row.track.track.absolutePath();
    case DeviationRole:
        return row.deviation;
    case DeviationTextRole:
        return LoudnessFigures::deviationText(row.deviation);
    case TintRole:
        return int(LoudnessFigures::isOutlier(row.deviation) ? Tint::Warn : Tint::InkSoft);
    case LevelTitleRole:
        return LoudnessFigures::levelTitle(row.gain);
    case ActsRole:
        return !row.track.hasReplayGain;
    default:
        return {};
    }
}

QHash<int, QByteArray> StandingModel::roleNames() const
{
    return {
        {KeyRole, "key"},   {FirstRole, "first"},           {SecondRole, "second"},
        {PathRole, "path"}, {DeviationRole, "deviation"},   {DeviationTextRole, "deviationText"},
        {TintRole, "tint"}, {LevelTitleRole, "levelTitle"}, {ActsRole, "acts"}};
}

void StandingModel::setRows(std::vector<Row> rows)
{
    m_rows = std::move(rows);
    QStringList keys;
    keys.reserve(qsizetype(m_rows.size()));
    for (const Row &row : m_rows)
        keys.append(row.track.track.relativePath);
    setKeys(distinct(keys));
}

const StandingModel::Row *StandingModel::rowOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    return place < 0 ? nullptr : &m_rows[size_t(place)];
}

} // namespace tarnwick
