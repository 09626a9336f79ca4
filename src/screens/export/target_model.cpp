#include "screens/export/target_model.h"

namespace tarnwick {

int TargetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(allExportTargets().size());
}

QVariant TargetModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ExportTargetInfo &info = allExportTargets().at(index.row());
    switch (role) {
    case NameRole:
        return info.rawValue;
    case SymbolRole:
        return info.symbol;
    case BlurbRole:
        return info.blurb;
    case ChosenRole:
        return info.target == m_chosen;
    default:
        return {};
    }
}

QHash<int, QByteArray> TargetModel::roleNames() const
{
    return {
        {NameRole, "name"}, {SymbolRole, "symbol"}, {BlurbRole, "blurb"}, {ChosenRole, "chosen"}};
}

void TargetModel::choose(ExportTarget target)
{
    m_chosen = target;
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {ChosenRole});
}

} // namespace tarnwick
