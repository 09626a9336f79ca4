#include "screens/safety/library_safety_presenter.h"

#include "screens/safety/safety_texts.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

LibrarySafetyPresenter::LibrarySafetyPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    for (const auto signal :
         {&AppState::locationsChanged, &AppState::libraryChanged, &AppState::seratoRunningChanged,
          &AppState::safetyChanged, &AppState::busyChanged})
        connect(&app, signal, this, &LibrarySafetyPresenter::readAll);
    readAll();
}

QString LibrarySafetyPresenter::found() const
{
    return u"%1 found"_s.arg(m_libraries.rowCount());
}

QString LibrarySafetyPresenter::takeTitle() const
{
    return m_app.busy() ? u"Working…"_s : u"Take snapshot"_s;
}

QString LibrarySafetyPresenter::taken() const
{
    const qsizetype count = m_app.snapshots().size();
    return count == 0 ? QString() : u"%1 taken"_s.arg(count);
}

QStringList LibrarySafetyPresenter::promises() const
{
    return Safety::neverDoes();
}

QString LibrarySafetyPresenter::statusSymbol() const
{
    return m_app.isSeratoRunning() ? u"exclamationmark.triangle.fill"_s : u"checkmark.seal.fill"_s;
}

QString LibrarySafetyPresenter::status() const
{
    return m_app.isSeratoRunning() ? u"Serato is running — writes are blocked"_s
                                   : u"Serato is closed — safe to work"_s;
}

void LibrarySafetyPresenter::scan(int row)
{
    if (row < 0 || row >= m_libraries.rowCount())
        return;
    // By value: the rows may be renewed while the scan starts.
    const SeratoLibrary::Location location = m_libraries.locationAt(row);
    m_app.startScan(location);
}

void LibrarySafetyPresenter::takeFirstSnapshot()
{
    if (canTake())
        m_app.takeSnapshot(u"First snapshot"_s);
}

void LibrarySafetyPresenter::readAll()
{
    const auto result = m_app.result();
    m_libraries.setLocations(m_app.locations(),
                             result ? std::optional(result->location) : std::nullopt);
    m_steps.setStanding({.hasFigures = bool(m_app.derived()),
                         .seratoRunning = m_app.isSeratoRunning(),
                         .hasResult = bool(result),
                         .hasSnapshot = !m_app.snapshots().isEmpty()});
    Q_EMIT changed();
}

} // namespace tarnwick
