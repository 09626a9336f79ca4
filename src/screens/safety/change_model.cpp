#include "screens/safety/change_model.h"

#include "screens/safety/change_log_figures.h"

namespace tarnwick {

ChangeModel::ChangeModel(const AppState &app, QObject *parent)
    : KeyedListModel(parent)
    , m_app(app)
{}

QVariant ChangeModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    if (place < 0)
        return {};
    const ChangeEntry &entry = m_entries.at(place);
    switch (role) {
    case KeyRole:
        return entry.id;
    case KindRole:
        return ChangeEntry::label(entry.kind);
    case DetailRole:
        return entry.detail;
    case LineRole:
        return ChangeLogFigures::reversibility(entry);
    case UndoneRole:
        return entry.reversed;
    case ActsRole:
        return !entry.reversed && entry.isReversible();
    default:
        return {};
    }
}

QHash<int, QByteArray> ChangeModel::roleNames() const
{
    return {{KeyRole, "key"},   {KindRole, "kind"},     {DetailRole, "detail"},
            {LineRole, "line"}, {UndoneRole, "undone"}, {ActsRole, "acts"}};
}

void ChangeModel::readEntries()
{
    m_entries = m_app.changeEntries();
    QStringList keys;
    keys.reserve(m_entries.size());
    for (const ChangeEntry &entry : std::as_const(m_entries))
        keys.append(entry.id);
    setKeys(keys);
}

} // namespace tarnwick
