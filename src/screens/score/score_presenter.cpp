#include "screens/score/score_presenter.h"

#include "screens/score/score_figures.h"
#include "screens/score/score_tint.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

ScorePresenter::ScorePresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    connect(&app, &AppState::libraryChanged, this, &ScorePresenter::readLibrary);
    readLibrary();
}

int ScorePresenter::tint() const
{
    return tintOfScore(m_score);
}

QString ScorePresenter::nextButton() const
{
    return u"Go to %1"_s.arg(m_worst.jumpTitle);
}

void ScorePresenter::goToNext()
{
    if (m_hasScore)
        m_app.setSelection(ScoreFigures::screenFor(m_worst.kind));
}

void ScorePresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_hasScore = bool(derived);
    if (derived) {
        m_score = derived->score;
        m_grade = derived->grade();
        m_source = ScoreFigures::sourceLine(derived->result().location.volumeName, derived->total);
        m_worst = derived->worst();
        m_dimensions.setDimensions(derived->dimensions);
    }
    Q_EMIT changed();
}

} // namespace tarnwick
