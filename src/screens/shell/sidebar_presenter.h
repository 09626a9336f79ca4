#pragma once

#include "app/app_state.h"
#include "screens/shell/sidebar_figures.h"
#include "screens/shell/sidebar_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The sidebar: where the user can go, and how the library stands.
class SidebarPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(tarnwick::SidebarModel *rows READ rows CONSTANT)
    Q_PROPERTY(bool hasTotals READ hasTotals NOTIFY totalsChanged)
    Q_PROPERTY(QString tracks READ tracks NOTIFY totalsChanged)
    Q_PROPERTY(QString onDisk READ onDisk NOTIFY totalsChanged)
    Q_PROPERTY(QString reclaim READ reclaim NOTIFY totalsChanged)

public:
    explicit SidebarPresenter(AppState &app, QObject *parent = nullptr);

    SidebarModel *rows() { return &m_rows; }
    bool hasTotals() const { return m_totals.has_value(); }
    QString tracks() const { return m_totals ? m_totals->tracks : QString(); }
    QString onDisk() const { return m_totals ? m_totals->onDisk : QString(); }
    QString reclaim() const { return m_totals ? m_totals->reclaim : QString(); }

    /// Selects the screen of a row, whether or not it is built.
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void rescan();

Q_SIGNALS:
    void totalsChanged();

private:
    void readLibrary();
    void readBadges();

    AppState &m_app;
    SidebarModel m_rows;
    std::optional<SidebarFigures::Totals> m_totals;
};

} // namespace tarnwick
