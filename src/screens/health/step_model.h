#pragma once

#include "screens/health/health_figures.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What to do first, at most four steps.
class StepModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { TitleRole = Qt::UserRole, DetailRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const HealthFigures::Step &stepAt(int row) const { return m_steps.at(row); }
    void setSteps(const QList<HealthFigures::Step> &steps);

private:
    QList<HealthFigures::Step> m_steps;
};

} // namespace tarnwick
