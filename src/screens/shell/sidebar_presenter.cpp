#include "screens/shell/sidebar_presenter.h"

namespace tarnwick {

SidebarPresenter::SidebarPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::libraryChanged, this, &SidebarPresenter::readLibrary);
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

void SidebarPresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_rows.setLibrary(derived.get());
    m_totals.reset();
    if (derived)
        m_totals = SidebarFigures::totalsOf(*derived);
    Q_EMIT totalsChanged();
}

} // namespace tarnwick
