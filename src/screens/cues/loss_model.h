#pragma once

#include "safety/cue_vault.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What files have lost, in library order.
class LossModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { KeyRole = Qt::UserRole, FirstRole, SecondRole, PathRole, LineRole };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setLosses(const QList<CueVault::Loss> &losses);
    /// The loss of a row by its key; null where it is no longer there.
    const CueVault::Loss *lossOf(const QString &key) const;

private:
    QList<CueVault::Loss> m_losses;
};

} // namespace tarnwick
