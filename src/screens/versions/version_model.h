#pragma once

#include "app/app_state.h"
#include "screens/components/keyed_list_model.h"

#include <QHash>
#include <QtQml/qqmlregistration.h>

#include <unordered_map>

namespace tarnwick {

/// The songs as rows of one list: of each its head, its cuts and its foot, since a song can have
/// any number of cuts. Keeps where a row stands among the present library's tracks; what it says is
/// read from there when it comes into view.
class VersionModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Kind { Head, Member, Foot };
    enum Role {
        KindRole = Qt::UserRole,
        GroupRole, ///< the song's lasting key
        PlaceRole, ///< of a cut in its song
        BaseRole,
        CountRole,
        CutRole,
        FirstRole,
        SecondRole,
        PathRole, ///< of a cut's file
        PlaysRole,
        PlaysTintRole,
        KeptRole,
        ActsRole,
    };

    explicit VersionModel(const AppState &app, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads the present library.
    void readLibrary();
    /// The song of a lasting key; null where it is no longer there. Good until the next drawing.
    const VersionGroup *groupOf(const QString &key) const;
    /// The cut to keep of a song; a null id without any.
    QUuid keeperOf(const VersionGroup &group) const;
    /// Chooses the cut to keep, and draws the songs anew.
    void setKeeper(const VersionGroup &group, const QUuid &member);

private:
    struct Row
    {
        Kind kind;
        quint32 group;
        quint32 member;
    };

    const VersionGroup &groupAt(quint32 number) const;
    QString keyOf(quint32 group) const;
    QVariant memberData(const VersionGroup &group, const Row &row, int role) const;

    const AppState &m_app;
    std::vector<Row> m_rows;
    /// The songs of this drawing that have come into view, under ids of this drawing.
    mutable std::unordered_map<quint32, VersionGroup> m_drawn;
    QHash<QUuid, QUuid> m_keepers; ///< by the ids of song and cut
};

} // namespace tarnwick
