#include "screens/health/step_model.h"

namespace tarnwick {

int StepModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_steps.size());
}

QVariant StepModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const HealthFigures::Step &step = m_steps.at(index.row());
    switch (role) {
    case TitleRole:
        return step.title;
    case DetailRole:
        return step.detail;
    default:
        return {};
    }
}

QHash<int, QByteArray> StepModel::roleNames() const
{
    return {{TitleRole, "title"}, {DetailRole, "detail"}};
}

void StepModel::setSteps(const QList<HealthFigures::Step> &steps)
{
    if (steps == m_steps)
        return;
    beginResetModel();
    m_steps = steps;
    endResetModel();
}

} // namespace tarnwick
