#pragma once

#include "export/export_target.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What a target takes along of the work on a track.
class CarryModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { NameRole = Qt::UserRole, CarriesRole, WordRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setTarget(ExportTarget target);

private:
    ExportTarget m_target = ExportTarget::Engine;
};

} // namespace tarnwick
