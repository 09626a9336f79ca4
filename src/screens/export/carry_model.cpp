#include "screens/export/carry_model.h"

#include "screens/export/export_figures.h"

namespace tarnwick {

int CarryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ExportFigures::carriesOf(m_target).size());
}

QVariant CarryModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto carries = ExportFigures::carriesOf(m_target);
    const ExportFigures::Carry &carry = carries.at(size_t(index.row()));
    switch (role) {
    case NameRole:
        return carry.name;
    case CarriesRole:
        return carry.carries;
    case WordRole:
        return carry.word();
    default:
        return {};
    }
}

QHash<int, QByteArray> CarryModel::roleNames() const
{
    return {{NameRole, "name"}, {CarriesRole, "carries"}, {WordRole, "word"}};
}

void CarryModel::setTarget(ExportTarget target)
{
    m_target = target;
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CarriesRole, WordRole});
}

} // namespace tarnwick
