#include "screens/score/dimension_model.h"

#include "screens/score/score_tint.h"

namespace tarnwick {

int DimensionModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_dimensions.size());
}

QVariant DimensionModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Dimension &dimension = m_dimensions.at(index.row());
    switch (role) {
    case NameRole:
        return Dimension::rawValue(dimension.kind);
    case DetailRole:
        return dimension.detail;
    case ScoreRole:
        return dimension.score;
    case TintRole:
        return tintOfScore(dimension.score);
    default:
        return {};
    }
}

QHash<int, QByteArray> DimensionModel::roleNames() const
{
    return {{NameRole, "name"}, {DetailRole, "detail"}, {ScoreRole, "score"}, {TintRole, "tint"}};
}

void DimensionModel::setDimensions(const QList<Dimension> &dimensions)
{
    if (dimensions.size() == m_dimensions.size()) {
        m_dimensions = dimensions;
        if (!m_dimensions.isEmpty())
            Q_EMIT dataChanged(index(0), index(int(m_dimensions.size()) - 1));
        return;
    }
    beginResetModel();
    m_dimensions = dimensions;
    endResetModel();
}

} // namespace tarnwick
