#include "screens/safety/library_model.h"

#include "screens/components/tint.h"
#include "screens/safety/library_safety_figures.h"

namespace tarnwick {

using LibrarySafetyFigures::LocationState;

namespace {

Tint::Value tintOf(LocationState state)
{
    switch (state) {
    case LocationState::Offline:
        return Tint::Neutral;
    case LocationState::NoDatabase:
        return Tint::Warn;
    case LocationState::Loaded:
        return Tint::Good;
    case LocationState::Ready:
        return Tint::Ink;
    }
    Q_UNREACHABLE();
}

} // namespace

int LibraryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_locations.size());
}

QVariant LibraryModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const SeratoLibrary::Location &location = m_locations.at(index.row());
    const LocationState state = LibrarySafetyFigures::stateOf(location, m_loaded);
    switch (role) {
    case VolumeRole:
        return location.volumeName;
    case FolderRole:
        return location.folderPath();
    case SymbolRole:
        return LibrarySafetyFigures::symbolOf(state);
    case StateRole:
        return LibrarySafetyFigures::textOf(state);
    case TintRole:
        return tintOf(state);
    case LoadedRole:
        return state == LocationState::Loaded;
    case CanScanRole:
        return state == LocationState::Ready;
    default:
        return {};
    }
}

QHash<int, QByteArray> LibraryModel::roleNames() const
{
    return {{VolumeRole, "volume"},  {FolderRole, "folder"}, {SymbolRole, "symbol"},
            {StateRole, "status"},   {TintRole, "tint"},     {LoadedRole, "loaded"},
            {CanScanRole, "canScan"}};
}

void LibraryModel::setLocations(const QList<SeratoLibrary::Location> &locations,
                                const std::optional<SeratoLibrary::Location> &loaded)
{
    if (locations == m_locations && loaded == m_loaded)
        return;
    beginResetModel();
    m_locations = locations;
    m_loaded = loaded;
    endResetModel();
}

} // namespace tarnwick
