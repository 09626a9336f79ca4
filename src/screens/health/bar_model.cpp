#include "screens/health/bar_model.h"

#include <algorithm>

namespace tarnwick {

int BarModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_bars.size());
}

QVariant BarModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const HealthFigures::Bar &bar = m_bars.at(index.row());
    switch (role) {
    case LabelRole:
        return bar.label;
    case CountRole:
        return bar.count;
    default:
        return {};
    }
}

QHash<int, QByteArray> BarModel::roleNames() const
{
    return {{LabelRole, "label"}, {CountRole, "count"}};
}

int BarModel::most() const
{
    int most = 0;
    for (const HealthFigures::Bar &bar : m_bars)
        most = std::max(most, bar.count);
    return most;
}

void BarModel::setBars(const QList<HealthFigures::Bar> &bars)
{
    if (bars == m_bars)
        return;
    beginResetModel();
    m_bars = bars;
    endResetModel();
    Q_EMIT mostChanged();
}

} // namespace tarnwick
