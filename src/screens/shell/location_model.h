#pragma once

#include "serato/serato_library.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The libraries found, as the first run lists them.
class LocationModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        VolumeRole = Qt::UserRole,
        FolderRole,
        OnlineRole,
        CanScanRole, ///< online and with a database
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const SeratoLibrary::Location &locationAt(int row) const { return m_locations.at(row); }
    /// Rows stay, and with them the keyboard, where nothing has changed.
    void setLocations(const QList<SeratoLibrary::Location> &locations);

private:
    QList<SeratoLibrary::Location> m_locations;
};

} // namespace tarnwick
