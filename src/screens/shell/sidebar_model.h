#pragma once

#include "analysis/derived.h"
#include "foundation/screen.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The rows of the sidebar: every screen of every group, in order. The first row of a group also
/// bears the group's heading.
class SidebarModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        HeadingRole = Qt::UserRole, ///< empty but for the first row of a group
        TitleRole,
        SymbolRole,
        BadgeRole,       ///< empty for none
        ImplementedRole, ///< false: the row is dimmed
        SelectedRole,
        ShortcutRole, ///< the key that selects it, in the desktop's words; empty for none
    };

    explicit SidebarModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Screen screenAt(int row) const { return m_rows.at(row).screen; }
    void setSelection(Screen screen);
    /// What the badges count: the library, null for none, and the changes made so far.
    void setFigures(const Derived *derived, int changes);

private:
    struct Row
    {
        Screen screen;
        QString heading;
        QString badge;
    };

    void rowsChanged(Role role);

    QList<Row> m_rows;
    Screen m_selection = Screen::LibraryScore;
};

} // namespace tarnwick
