#include "screens/loudness/loudness_presenter.h"

#include "screens/loudness/loudness_figures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

LoudnessPresenter::LoudnessPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
{
    connect(&app, &AppState::libraryChanged, this, &LoudnessPresenter::readLibrary);
    connect(&app, &AppState::seratoRunningChanged, this, &LoudnessPresenter::changed);
    readLibrary();
}

QString LoudnessPresenter::offer() const
{
    return u"%1 tracks stand out from the library average"_s.arg(m_outliers);
}

QString LoudnessPresenter::levelAllTitle() const
{
    return u"Level all %1"_s.arg(m_outliers);
}

void LoudnessPresenter::level(const QString &key)
{
    const StandingModel::Row *found = m_tracks.rowOf(key);
    if (!found)
        return;
    // By value: the command renews the rows.
    const StandingModel::Row row = *found;
    m_app.normalizeLoudness(row.track, row.gain);
}

void LoudnessPresenter::levelAll()
{
    const auto derived = m_app.derived();
    if (!derived)
        return;
    const auto outliers = LoudnessFigures::outliers(LoudnessFigures::tracks(*derived));
    if (!outliers.empty())
        m_app.normalizeAllLoudness(LoudnessFigures::levelling(*derived, outliers));
}

void LoudnessPresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_hasLibrary = bool(derived);
    std::vector<LoudnessFigures::Standing> standings;
    if (derived) {
        standings = LoudnessFigures::tracks(*derived);
        m_average = LoudnessFigures::averageText(*derived);
    }
    m_analysed = standings.size();
    m_outliers = LoudnessFigures::outliers(standings).size();
    standings.resize(std::min(standings.size(), LoudnessFigures::mostRows));
    std::vector<StandingModel::Row> rows;
    for (const LoudnessFigures::Standing &one : standings) {
        const ScannedTrack &track = derived->result().tracks[one.index];
        rows.push_back({track, one.deviation, derived->normalizingGain(track).value_or(0)});
    }
    m_tracks.setRows(std::move(rows));
    Q_EMIT changed();
}

} // namespace tarnwick
