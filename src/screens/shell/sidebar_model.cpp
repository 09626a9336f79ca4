#include "screens/shell/sidebar_model.h"

#include "screens/shell/sidebar_figures.h"

#include <QKeySequence>

namespace tarnwick {

namespace {

/// As many as there are digits to press; Shortcuts.qml binds the same.
constexpr int rowsWithShortcut = 9;

QString shortcutOf(int row)
{
    if (row >= rowsWithShortcut)
        return {};
    return QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + row)).toString(QKeySequence::NativeText);
}

} // namespace

SidebarModel::SidebarModel(QObject *parent)
    : QAbstractListModel(parent)
{
    for (const NavGroup &group : Nav::groups()) {
        for (const Screen screen : group.screens)
            m_rows.append({screen, screen == group.screens.first() ? group.title : QString(), {}});
    }
}

int SidebarModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    const ScreenInfo &info = infoOf(row.screen);
    switch (role) {
    case HeadingRole:
        return row.heading;
    case TitleRole:
        return info.title;
    case SymbolRole:
        return info.symbol;
    case BadgeRole:
        return row.badge;
    case ImplementedRole:
        return info.isImplemented;
    case SelectedRole:
        return row.screen == m_selection;
    case ShortcutRole:
        return shortcutOf(index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const
{
    return {{HeadingRole, "heading"},         {TitleRole, "title"},
            {SymbolRole, "symbol"},           {BadgeRole, "badge"},
            {ImplementedRole, "implemented"}, {SelectedRole, "selected"},
            {ShortcutRole, "shortcut"}};
}

void SidebarModel::setSelection(Screen screen)
{
    m_selection = screen;
    rowsChanged(SelectedRole);
}

void SidebarModel::setFigures(const Derived *derived, int changes)
{
    for (Row &row : m_rows)
        row.badge = SidebarFigures::sidebarCount(row.screen, derived, changes).value_or(QString());
    rowsChanged(BadgeRole);
}

void SidebarModel::rowsChanged(Role role)
{
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {role});
}

} // namespace tarnwick
