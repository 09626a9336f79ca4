#pragma once

#include "analysis/dimensions.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The rows of the dimensions panel.
class DimensionModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { NameRole = Qt::UserRole, DetailRole, ScoreRole, TintRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Rows stay where they are: there are as many each time, in the same order.
    void setDimensions(const QList<Dimension> &dimensions);

private:
    QList<Dimension> m_dimensions;
};

} // namespace tarnwick
