#pragma once

#include "export/export_records.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace tarnwick {

/// The two figures of a drift; none where none is known.
class DriftModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { LabelRole = Qt::UserRole, ValueRole, TintRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setDrift(const std::optional<ExportDrift> &drift);

private:
    std::optional<ExportDrift> m_drift;
};

} // namespace tarnwick
