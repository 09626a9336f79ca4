#include "screens/missing/missing_model.h"

#include "screens/components/track_line_figures.h"
#include "screens/missing/missing_figures.h"

namespace tarnwick {

MissingModel::MissingModel(const AppState &app, QObject *parent)
    : KeyedListModel(parent)
    , m_app(app)
{}

QVariant MissingModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    const auto result = m_app.result();
    if (place < 0 || !result)
        return {};
    const SeratoTrack &track = result->tracks[m_places[size_t(place)]].track;
    switch (role) {
    case KeyRole:
        return keys().at(place);
    case FirstRole:
        return TrackLineText::first(track);
    case SecondRole:
        return TrackLineText::second(track);
    case LastSeenRole:
        return MissingFigures::lastSeen(track);
    case PathRole:
        return track.absolutePath();
    case ExpandedRole:
        return track.id == m_expanded;
    default:
        return {};
    }
}

QHash<int, QByteArray> MissingModel::roleNames() const
{
    return {{KeyRole, "key"},           {FirstRole, "first"}, {SecondRole, "second"},
            {LastSeenRole, "lastSeen"}, {PathRole, "path"},   {ExpandedRole, "expanded"}};
}

void MissingModel::readLibrary()
{
    m_places.clear();
    QStringList keys;
    if (const auto result = m_app.result()) {
        for (size_t i = 0; i < result->tracks.size(); ++i) {
            if (!result->tracks[i].isMissing())
                continue;
            m_places.push_back(i);
            keys.append(result->tracks[i].track.relativePath);
        }
    }
    setKeys(distinct(keys));
}

void MissingModel::setExpanded(const QUuid &track)
{
    m_expanded = track;
    touchAll({ExpandedRole});
}

const ScannedTrack *MissingModel::trackOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    const auto result = m_app.result();
    return place < 0 || !result ? nullptr : &result->tracks[m_places[size_t(place)]];
}

} // namespace tarnwick
