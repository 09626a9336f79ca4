#pragma once

#include "app/app_state.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The libraries found, each with how it stands.
class LibraryModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        VolumeRole = Qt::UserRole,
        FolderRole,
        SymbolRole,
        StateRole,
        TintRole,
        LoadedRole,
        CanScanRole,
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const SeratoLibrary::Location &locationAt(int row) const { return m_locations.at(row); }
    /// `loaded` is the library of the present scan result.
    void setLocations(const QList<SeratoLibrary::Location> &locations,
                      const std::optional<SeratoLibrary::Location> &loaded);

private:
    QList<SeratoLibrary::Location> m_locations;
    std::optional<SeratoLibrary::Location> m_loaded;
};

} // namespace tarnwick
