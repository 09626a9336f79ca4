#pragma once

#include "screens/components/keyed_list_model.h"
#include "serato/loaded_crate.h"

#include <QSet>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The crates of the library, and which of them are picked for a set. Picks go by name and outlast
/// a new reading of the crates.
class GigCrateModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { NameRole = Qt::UserRole, TracksRole, PickedRole };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setCrates(const QList<LoadedCrate> &crates);
    void pickAll();
    /// Picks the crate of a row, or lets go of it.
    void toggle(const QString &name);
    const QSet<QString> &picked() const { return m_picked; }

private:
    QList<LoadedCrate> m_crates;
    QSet<QString> m_picked;
};

} // namespace tarnwick
