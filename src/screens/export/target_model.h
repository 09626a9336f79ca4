#pragma once

#include "export/export_target.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What a library can be exported to, one of which is chosen.
class TargetModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { NameRole = Qt::UserRole, SymbolRole, BlurbRole, ChosenRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    ExportTarget chosen() const { return m_chosen; }
    void choose(ExportTarget target);

private:
    ExportTarget m_chosen = ExportTarget::Engine;
};

} // namespace tarnwick
