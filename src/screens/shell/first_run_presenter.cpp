#include "screens/shell/first_run_presenter.h"

#include "screens/safety/safety_texts.h"

namespace tarnwick {

FirstRunPresenter::FirstRunPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::seratoRunningChanged, this, &FirstRunPresenter::seratoRunningChanged);
    connect(&app, &AppState::locationsChanged, this, &FirstRunPresenter::readLocations);
    readLocations();
}

QStringList FirstRunPresenter::promises() const
{
    return Safety::neverDoes();
}

void FirstRunPresenter::scan(int row)
{
    if (row < 0 || row >= m_locations.rowCount())
        return;
    // By value: the rows may be renewed while the scan starts.
    const SeratoLibrary::Location location = m_locations.locationAt(row);
    m_app.startScan(location);
}

void FirstRunPresenter::readLocations()
{
    m_locations.setLocations(m_app.locations());
    Q_EMIT locationsChanged();
}

} // namespace tarnwick
