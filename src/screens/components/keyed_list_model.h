#pragma once

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// A list whose rows are known by lasting keys. Where the library changes, rows that stay are not
/// touched, so that a view keeps its place and the keyboard.
///
/// Holds the keys alone: a subclass sets its own rows first, then calls `setKeys`, and looks its
/// rows up by `placeOf`.
class KeyedListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;

protected:
    /// Tells the views how the rows have changed: what went, what came, and that the rest may read
    /// otherwise than before.
    void setKeys(const QStringList &keys);
    /// The same keys, each once: a second of a kind gets an addition that no path, name or key has.
    /// For rows that act on their own record where two records may bear one path.
    static QStringList distinct(QStringList keys);

    /// Where a row stands among the keys that were set last; -1 for one that is just going.
    int placeOf(const QModelIndex &index) const;
    const QStringList &keys() const { return m_keys; }
    void touchAll(const QList<int> &roles = {});

private:
    QList<int> placesAmong(const QStringList &keys) const;
    void removeGone();
    void insertNew(int count);

    QStringList m_keys;
    QList<int> m_places; ///< of each row, among m_keys
};

} // namespace tarnwick
