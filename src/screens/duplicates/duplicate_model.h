#pragma once

#include "app/app_state.h"
#include "screens/components/keyed_list_model.h"

#include <QHash>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The groups as rows of one list: of each its head, its members and its foot, since a group can
/// have any number of members. Keeps where a row stands in the present figures; what it says is
/// read from there when it comes into view.
class DuplicateModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Kind { Head, Member, Foot };
    enum Role {
        KindRole = Qt::UserRole,
        GroupRole, ///< the group's lasting key
        PlaceRole, ///< of a member in its group
        CopiesRole,
        ReclaimableRole,
        FirstRole,
        SecondRole,
        PathRole, ///< of a member's file
        TagsRole,
        KeptRole,
        ActsRole,
    };

    explicit DuplicateModel(const AppState &app, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads the present figures.
    void readLibrary();
    /// The group of a lasting key; null where it is no longer there. Good until the library
    /// changes.
    const DuplicateGroup *groupOf(const QString &key) const;
    /// The chosen keeper of a group, else its best copy; a null id without members.
    QUuid keeperOf(const DuplicateGroup &group) const;
    void setKeeper(const DuplicateGroup &group, const QUuid &member);

private:
    struct Row
    {
        Kind kind;
        quint32 group;
        quint32 member;
    };

    QVariant memberData(const DuplicateGroup &group, const Row &row, int role) const;

    const AppState &m_app;
    std::vector<Row> m_rows;
    QHash<QUuid, QUuid> m_keepers; ///< by the ids of group and member
};

} // namespace tarnwick
