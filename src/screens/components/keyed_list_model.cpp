#include "screens/components/keyed_list_model.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace tarnwick {

namespace {

constexpr int gone = -1;
/// Above so many separate changes a view is quicker if it starts afresh.
constexpr int mostChanges = 400;

/// The number of rows where a run of rows that go begins, or a gap in which new ones come.
int changesIn(const QList<int> &places, int count)
{
    int changes = 0;
    int expected = 0;
    bool inRun = false;
    for (const int place : places) {
        if (place == gone) {
            changes += inRun ? 0 : 1;
            inRun = true;
            continue;
        }
        inRun = false;
        changes += place == expected ? 0 : 1;
        expected = place + 1;
    }
    return changes + (expected == count ? 0 : 1);
}

} // namespace

int KeyedListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_places.size());
}

QStringList KeyedListModel::distinct(QStringList keys)
{
    QHash<QString, int> seen;
    seen.reserve(keys.size());
    for (QString &key : keys) {
        if (const int before = seen[key]++)
            key += QChar(u'\0') + QString::number(before);
    }
    return keys;
}

int KeyedListModel::placeOf(const QModelIndex &index) const
{
    return checkIndex(index, CheckIndexOption::IndexIsValid) ? m_places.at(index.row()) : gone;
}

void KeyedListModel::touchAll(const QList<int> &roles)
{
    if (!m_places.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_places.size()) - 1), roles);
}

/// The new place of each present row. Places rise: of rows that have changed their order some count
/// as gone, and come anew.
QList<int> KeyedListModel::placesAmong(const QStringList &keys) const
{
    const auto common = std::min(keys.size(), m_keys.size());
    const auto same = int(std::mismatch(keys.begin(), keys.begin() + common, m_keys.begin()).first -
                          keys.begin());
    QList<int> places(m_keys.size());
    std::iota(places.begin(), places.begin() + same, 0);
    if (same == m_keys.size())
        return places;
    QHash<QString, int> found;
    found.reserve(keys.size() - same);
    for (int i = int(keys.size()) - 1; i >= same; --i)
        found.insert(keys.at(i), i);
    int last = same - 1;
    for (int i = same; i < m_keys.size(); ++i) {
        const int place = found.value(m_keys.at(i), gone);
        places[i] = place > last ? place : gone;
        last = std::max(last, place);
    }
    return places;
}

void KeyedListModel::removeGone()
{
    for (int end = int(m_places.size()); end > 0; --end) {
        if (m_places.at(end - 1) != gone)
            continue;
        int first = end - 1;
        while (first > 0 && m_places.at(first - 1) == gone)
            --first;
        beginRemoveRows({}, first, end - 1);
        m_places.remove(first, end - first);
        endRemoveRows();
        end = first + 1;
    }
}

void KeyedListModel::insertNew(int count)
{
    for (int row = 0; row < count; ++row) {
        const int next = row < m_places.size() ? m_places.at(row) : count;
        if (next == row)
            continue;
        beginInsertRows({}, row, next - 1);
        m_places.insert(row, next - row, gone);
        std::iota(m_places.begin() + row, m_places.begin() + next, row);
        endInsertRows();
        row = next - 1;
    }
}

void KeyedListModel::setKeys(const QStringList &keys)
{
    const QList<int> places = placesAmong(keys);
    m_keys = keys;
    if (changesIn(places, int(keys.size())) > mostChanges) {
        beginResetModel();
        m_places.resize(keys.size());
        std::iota(m_places.begin(), m_places.end(), 0);
        endResetModel();
        return;
    }
    m_places = places;
    removeGone();
    insertNew(int(keys.size()));
    touchAll();
}

} // namespace tarnwick
