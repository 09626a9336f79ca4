#include "screens/cues/loss_model.h"

#include "screens/components/track_line_figures.h"
#include "screens/cues/cue_figures.h"

namespace tarnwick {

QVariant LossModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    const CueVault::Loss &loss = m_losses.at(place);
    switch (role) {
    case KeyRole:
        return keys().at(place);
    case FirstRole:
        return TrackLineText::first(loss.track.track);
    case SecondRole:
        return TrackLineText::second(loss.track.track);
    case PathRole:
        return loss.track.track.absolutePath();
    case LineRole:
        return CueFigures::lossLine(loss);
    default:
        return {};
    }
}

QHash<int, QByteArray> LossModel::roleNames() const
{
    return {{KeyRole, "key"},
            {FirstRole, "first"},
            {SecondRole, "second"},
            {PathRole, "path"},
            {LineRole, "line"}};
}

void LossModel::setLosses(const QList<CueVault::Loss> &losses)
{
    m_losses = losses;
    QStringList keys;
    keys.reserve(losses.size());
    for (const CueVault::Loss &loss : losses)
        keys.append(loss.track.track.relativePath);
    setKeys(distinct(keys));
}

const CueVault::Loss *LossModel::lossOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    return place < 0 ? nullptr : &m_losses.at(place);
}

} // namespace tarnwick
