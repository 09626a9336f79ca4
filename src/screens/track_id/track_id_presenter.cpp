#include "screens/track_id/track_id_presenter.h"

#include "screens/track_id/track_id_actions.h"
#include "screens/track_id/track_id_figures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

TrackIdPresenter::TrackIdPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
{
    connect(&app, &AppState::libraryChanged, this, &TrackIdPresenter::readLibrary);
    connect(&app, &AppState::seratoRunningChanged, this, &TrackIdPresenter::changed);
    readLibrary();
}

QString TrackIdPresenter::offer() const
{
    return u"%1 tracks match a genre you've already used for that artist"_s.arg(m_ready);
}

QString TrackIdPresenter::tagAllTitle() const
{
    return u"Tag all %1"_s.arg(m_ready);
}

void TrackIdPresenter::tag(const QString &key)
{
    const UntaggedModel::Row *found = m_tracks.rowOf(key);
    if (!found || !found->suggestion)
        return;
    // By value: the command renews the rows.
    const UntaggedModel::Row row = *found;
    m_app.setGenre(row.track, row.suggestion->genre);
}

void TrackIdPresenter::tagAll()
{
    TrackIdActions::tagAllReady(m_app);
}

void TrackIdPresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_hasLibrary = bool(derived);
    std::vector<TrackIdFigures::Untagged> untagged;
    if (derived)
        untagged = TrackIdFigures::untagged(*derived);
    m_untagged = untagged.size();
    m_suggested = TrackIdFigures::suggestions(untagged).size();
    m_ready = TrackIdFigures::ready(untagged).size();
    untagged.resize(std::min(untagged.size(), TrackIdFigures::mostRows));
    std::vector<UntaggedModel::Row> rows;
    rows.reserve(untagged.size());
    for (const TrackIdFigures::Untagged &one : untagged)
        rows.push_back({derived->result().tracks[one.index], one.suggestion});
    m_tracks.setRows(std::move(rows), m_untagged - untagged.size());
    Q_EMIT changed();
}

} // namespace tarnwick
