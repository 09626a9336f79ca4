#include "screens/export/drift_model.h"

#include "screens/components/tint.h"
#include "screens/export/export_figures.h"

namespace tarnwick {

int DriftModel::rowCount(const QModelIndex &parent) const
{
    return m_drift && !parent.isValid() ? int(ExportFigures::figuresOf(*m_drift).size()) : 0;
}

QVariant DriftModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto figures = ExportFigures::figuresOf(*m_drift);
    const ExportFigures::DriftFigure &figure = figures.at(size_t(index.row()));
    switch (role) {
    case LabelRole:
        return figure.label;
    case ValueRole:
        return QString::number(figure.count);
    case TintRole:
        return figure.isInLine() ? Tint::Good : Tint::Warn;
    default:
        return {};
    }
}

QHash<int, QByteArray> DriftModel::roleNames() const
{
    return {{LabelRole, "label"}, {ValueRole, "value"}, {TintRole, "tint"}};
}

void DriftModel::setDrift(const std::optional<ExportDrift> &drift)
{
    beginResetModel();
    m_drift = drift;
    endResetModel();
}

} // namespace tarnwick
