#include "screens/safety/safety_step_model.h"

#include "screens/safety/safety_texts.h"

namespace tarnwick {

int SafetyStepModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(Safety::steps().size());
}

QVariant SafetyStepModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Safety::Step &step = Safety::steps().at(index.row());
    switch (role) {
    case TitleRole:
        return step.title;
    case DetailRole:
        return step.detail;
    case DoneRole:
        return LibrarySafetyFigures::isDone(index.row(), m_standing);
    case SnapshotRole:
        return index.row() == LibrarySafetyFigures::snapshotStep;
    default:
        return {};
    }
}

QHash<int, QByteArray> SafetyStepModel::roleNames() const
{
    return {{TitleRole, "title"},
            {DetailRole, "detail"},
            {DoneRole, "done"},
            {SnapshotRole, "takesSnapshot"}};
}

void SafetyStepModel::setStanding(const LibrarySafetyFigures::Standing &standing)
{
    m_standing = standing;
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {DoneRole});
}

} // namespace tarnwick
