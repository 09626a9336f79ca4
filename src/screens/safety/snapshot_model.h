#pragma once

#include "app/app_state.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The snapshots, newest first, as AppState holds them.
class SnapshotModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { KeyRole = Qt::UserRole, ReasonRole, LineRole };

    explicit SnapshotModel(const AppState &app, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void readSnapshots();

private:
    const AppState &m_app;
};

} // namespace tarnwick
