#include "screens/cues/cues_presenter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

CuesPresenter::CuesPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
    , m_timeline(app)
{
    connect(&app, &AppState::libraryChanged, this, &CuesPresenter::readLibrary);
    connect(&app, &AppState::safetyChanged, this, &CuesPresenter::readLibrary);
    readLibrary();
}

QString CuesPresenter::restoreAllTitle() const
{
    return u"Restore all %1"_s.arg(m_losses.rowCount());
}

void CuesPresenter::restore(const QString &key)
{
    // By value: the command renews the rows.
    if (const CueVault::Loss *loss = m_losses.lossOf(key))
        m_app.restoreCues(CueVault::Loss(*loss));
}

void CuesPresenter::restoreAll()
{
    m_app.restoreAllCues();
}

void CuesPresenter::readLibrary()
{
    m_losses.setLosses(m_app.cueLosses());
    const auto derived = m_app.derived();
    m_withGrid = derived ? derived->withGrid : 0;
    Q_EMIT changed();
}

} // namespace tarnwick
