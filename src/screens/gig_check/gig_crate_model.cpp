#include "screens/gig_check/gig_crate_model.h"

namespace tarnwick {

QVariant GigCrateModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    const LoadedCrate &crate = m_crates.at(place);
    switch (role) {
    case NameRole:
        return crate.name;
    case TracksRole:
        return QString::number(crate.count());
    case PickedRole:
        return m_picked.contains(crate.name);
    default:
        return {};
    }
}

QHash<int, QByteArray> GigCrateModel::roleNames() const
{
    return {{NameRole, "name"}, {TracksRole, "tracks"}, {PickedRole, "picked"}};
}

void GigCrateModel::setCrates(const QList<LoadedCrate> &crates)
{
    m_crates = crates;
    QStringList keys;
    keys.reserve(crates.size());
    for (const LoadedCrate &crate : crates)
        keys.append(crate.id());
    setKeys(keys);
}

void GigCrateModel::pickAll()
{
    for (const LoadedCrate &crate : std::as_const(m_crates))
        m_picked.insert(crate.name);
    touchAll({PickedRole});
}

void GigCrateModel::toggle(const QString &name)
{
    if (!m_picked.remove(name))
        m_picked.insert(name);
    touchAll({PickedRole});
}

} // namespace tarnwick
