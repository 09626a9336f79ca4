#include "screens/missing/missing_presenter.h"

#include "platform/background.h"
#include "platform/file_choice.h"
#include "screens/missing/missing_figures.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace tarnwick {

MissingPresenter::MissingPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
    , m_tracks(app)
{
    connect(&app, &AppState::libraryChanged, this, &MissingPresenter::readLibrary);
    readLibrary();
}

QString MissingPresenter::panelText() const
{
    if (m_expanded.isNull())
        return {};
    if (!m_found.contains(m_expanded))
        return u"Searching your drives…"_s;
    return m_found.value(m_expanded).isEmpty()
               ? u"No candidates found on the indexed drives. Use Browse… to point at the file."_s
               : QString();
}

void MissingPresenter::toggle(const QString &key)
{
    const ScannedTrack *track = m_tracks.trackOf(key);
    if (!track)
        return;
    if (m_expanded == track->id()) {
        m_expanded = {};
    } else {
        m_expanded = track->id();
        if (!m_found.contains(m_expanded) && !m_searching.contains(m_expanded))
            search(track->track);
    }
    showPanel();
    m_tracks.setExpanded(m_expanded);
}

void MissingPresenter::search(const SeratoTrack &track)
{
    m_searching.insert(track.id);
    platform::runInBackground(
        platform::Priority::UserInitiated, this,
        [track] { return RepairEngine::relinkCandidates(track); },
        [this, id = track.id](const QList<RepairEngine::Candidate> &found) {
            m_found.insert(id, found);
            m_searching.remove(id);
            showPanel();
        });
}

void MissingPresenter::showPanel()
{
    m_candidates.setCandidates(m_found.value(m_expanded));
    Q_EMIT panelChanged();
}

void MissingPresenter::browse(const QString &key)
{
    const ScannedTrack *track = m_tracks.trackOf(key);
    if (!track)
        return;
    // The screen, and the row on it, may have gone by the time of the answer.
    const QPointer<MissingPresenter> guard(this);
    platform::chooseFile({.message = MissingFigures::browseMessage(track->track)},
                         [guard, wanted = *track](const QString &path) {
                             if (guard)
                                 guard->m_app.relink(wanted, QUrl::fromLocalFile(path));
                         });
}

void MissingPresenter::drop(const QString &key)
{
    if (const ScannedTrack *track = m_tracks.trackOf(key))
        m_app.dropFromLibrary(ScannedTrack(*track));
}

void MissingPresenter::relink(const QString &key, int candidate)
{
    const ScannedTrack *track = m_tracks.trackOf(key);
    if (!track || track->id() != m_expanded || candidate < 0 ||
        candidate >= m_candidates.rowCount())
        return;
    m_app.relink(ScannedTrack(*track), m_candidates.candidateAt(candidate).url);
}

void MissingPresenter::readLibrary()
{
    m_tracks.readLibrary();
    Q_EMIT changed();
}

} // namespace tarnwick
