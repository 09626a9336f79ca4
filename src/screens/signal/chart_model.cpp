#include "screens/signal/chart_model.h"

#include "screens/signal/signal_figures.h"

namespace tarnwick {

QVariant ChartModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    const LandingTrack &track = m_rows.at(place);
    switch (role) {
    case KeyRole:
        return track.id();
    case RankRole:
        return QString::number(place + 1);
    case LineRole:
        return SignalFigures::line(track);
    case LanesRole:
        return SignalFigures::lanes(track);
    case MarkedRole:
        return m_owned.contains(track.trackKey) && !m_played.contains(track.trackKey);
    case DjsRole:
        return SignalFigures::djs(track);
    case PlaysRole:
        return SignalFigures::plays(track);
    case ActsRole:
        return false;
    default:
        return {};
    }
}

QHash<int, QByteArray> ChartModel::roleNames() const
{
    return {{KeyRole, "key"},       {RankRole, "rank"}, {LineRole, "line"},   {LanesRole, "lanes"},
            {MarkedRole, "marked"}, {DjsRole, "djs"},   {PlaysRole, "plays"}, {ActsRole, "acts"}};
}

void ChartModel::setRows(const QList<LandingTrack> &rows, const QSet<QString> &owned,
                         const QSet<QString> &played)
{
    m_rows = rows;
    m_owned = owned;
    m_played = played;
    QStringList keys;
    keys.reserve(rows.size());
    for (const LandingTrack &track : rows)
        keys.append(track.id());
    setKeys(keys);
}

} // namespace tarnwick
