#include "screens/safety/snapshot_model.h"

#include "foundation/byte_format.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

SnapshotModel::SnapshotModel(const AppState &app, QObject *parent)
    : KeyedListModel(parent)
    , m_app(app)
{}

QVariant SnapshotModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0 || place >= m_app.snapshots().size())
        return {};
    const Snapshot &snapshot = m_app.snapshots().at(place);
    switch (role) {
    case KeyRole:
        return snapshot.id;
    case ReasonRole:
        return snapshot.reason;
    case LineRole:
        return QString(snapshot.shortDate() + u" · "_s + ByteFmt::string(snapshot.byteSize));
    default:
        return {};
    }
}

QHash<int, QByteArray> SnapshotModel::roleNames() const
{
    return {{KeyRole, "key"}, {ReasonRole, "reason"}, {LineRole, "line"}};
}

void SnapshotModel::readSnapshots()
{
    QStringList keys;
    keys.reserve(m_app.snapshots().size());
    for (const Snapshot &snapshot : m_app.snapshots())
        keys.append(snapshot.id);
    setKeys(keys);
}

} // namespace tarnwick
