#include "screens/health/health_presenter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

HealthPresenter::HealthPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::libraryChanged, this, &HealthPresenter::readLibrary);
    readLibrary();
}

QString HealthPresenter::estimate() const
{
    return u"~%1 minutes"_s.arg(m_minutes);
}

QString HealthPresenter::genresNote() const
{
    return u"%1 tagged"_s.arg(m_withGenre);
}

QString HealthPresenter::tempoNote() const
{
    return u"%1 analysed"_s.arg(m_withBpm);
}

void HealthPresenter::goTo(int step)
{
    if (step >= 0 && step < m_steps.rowCount())
        m_app.setSelection(m_steps.stepAt(step).jump);
}

void HealthPresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_hasLibrary = bool(derived);
    if (derived) {
        m_missing = derived->missing;
        m_groups = qsizetype(derived->duplicateGroups.size());
        m_untagged = derived->total - derived->withGenre;
        m_minutes = derived->estimatedMinutes();
        m_withGenre = derived->withGenre;
        m_withBpm = derived->withBpm;
        m_steps.setSteps(HealthFigures::steps(*derived));
        m_genres.setBars(HealthFigures::topGenres(*derived));
        m_tempos.setBars(HealthFigures::bpmBands(*derived));
    }
    Q_EMIT changed();
}

} // namespace tarnwick
