#pragma once

#include "app/app_state.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The entries of the change log, newest first, as AppState holds them.
class ChangeModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole,
        KindRole,
        DetailRole,
        LineRole,
        UndoneRole,
        ActsRole, ///< it can be undone now
    };

    explicit ChangeModel(const AppState &app, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void readEntries();
    const QList<ChangeEntry> &entries() const { return m_entries; }

private:
    const AppState &m_app;
    QList<ChangeEntry> m_entries;
};

} // namespace tarnwick
