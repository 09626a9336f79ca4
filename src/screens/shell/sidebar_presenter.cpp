#include "screens/shell/sidebar_presenter.h"

namespace tarnwick {

SidebarPresenter::SidebarPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::libraryChanged, this, &SidebarPresenter::readLibrary);
    connect(&app, &AppState::safetyChanged, this, &SidebarPresenter::readBadges);
    connect(&app, &AppState::selectionChanged, this,
            [this] { m_rows.setSelection(m_app.selection()); });
    m_rows.setSelection(app.selection());
    readLibrary();
}

void SidebarPresenter::select(int row)
{
    if (row >= 0 && row < m_rows.rowCount())
        m_app.setSelection(m_rows.screenAt(row));
}

void SidebarPresenter::rescan()
{
    m_app.rescan();
}

void SidebarPresenter::readBadges()
{
    // Until the log has been read there is nothing to count, and the window must not wait for it.
    const ChangeLog &log = m_app.changeLog();
    m_rows.setFigures(m_app.derived().get(), log.isLoaded() ? log.changeCount() : 0);
}

void SidebarPresenter::readLibrary()
{
    readBadges();
    m_totals.reset();
    if (const auto derived = m_app.derived())
        m_totals = SidebarFigures::totalsOf(*derived);
    Q_EMIT totalsChanged();
}

} // namespace tarnwick
