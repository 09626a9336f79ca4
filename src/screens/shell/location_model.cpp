#include "screens/shell/location_model.h"

namespace tarnwick {

int LocationModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_locations.size());
}

QVariant LocationModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const SeratoLibrary::Location &location = m_locations.at(index.row());
    switch (role) {
    case VolumeRole:
        return location.volumeName;
    case FolderRole:
        return location.folderPath();
    case OnlineRole:
        return location.isOnline;
    case CanScanRole:
        return location.isOnline && location.hasDatabase;
    default:
        return {};
    }
}

QHash<int, QByteArray> LocationModel::roleNames() const
{
    return {{VolumeRole, "volume"},
            {FolderRole, "folder"},
            {OnlineRole, "online"},
            {CanScanRole, "canScan"}};
}

void LocationModel::setLocations(const QList<SeratoLibrary::Location> &locations)
{
    if (locations == m_locations)
        return;
    beginResetModel();
    m_locations = locations;
    endResetModel();
}

} // namespace tarnwick
