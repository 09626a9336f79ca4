#include "screens/safety/timeline_presenter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

TimelinePresenter::TimelinePresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_snapshots(app)
{
    connect(&app, &AppState::safetyChanged, this, &TimelinePresenter::readSnapshots);
    connect(&app, &AppState::busyChanged, this, &TimelinePresenter::changed);
    connect(&app, &AppState::seratoRunningChanged, this, &TimelinePresenter::changed);
    readSnapshots();
}

void TimelinePresenter::take()
{
    if (canTake())
        m_app.takeSnapshot(u"Manual snapshot"_s);
}

void TimelinePresenter::rollBack(const QString &snapshot)
{
    const QList<Snapshot> all = m_app.snapshots();
    for (const Snapshot &one : all) {
        if (one.id == snapshot)
            return m_app.restoreSnapshot(one);
    }
}

void TimelinePresenter::readSnapshots()
{
    m_snapshots.readSnapshots();
    Q_EMIT changed();
}

} // namespace tarnwick
