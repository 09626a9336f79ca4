#include "screens/safety/change_log_presenter.h"

#include "screens/safety/change_log_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

ChangeLogPresenter::ChangeLogPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_changes(app)
    , m_timeline(app)
{
    connect(&app, &AppState::safetyChanged, this, &ChangeLogPresenter::readLog);
    readLog();
}

void ChangeLogPresenter::undo(const QString &entry)
{
    // By value: the undo renews the rows.
    const QList<ChangeEntry> entries = m_changes.entries();
    for (const ChangeEntry &one : entries) {
        if (one.id == entry)
            return m_app.undo(one);
    }
}

void ChangeLogPresenter::undoEverything()
{
    m_app.undoEverything();
}

void ChangeLogPresenter::readLog()
{
    m_changes.readEntries();
    // The log may still be on its way from the disk.
    const ChangeLog &log = m_app.changeLog();
    m_made = QString::number(log.isLoaded() ? log.changeCount() : 0);
    m_hasReversible = ChangeLogFigures::anyReversible(m_changes.entries());
    Q_EMIT changed();
}

} // namespace tarnwick
