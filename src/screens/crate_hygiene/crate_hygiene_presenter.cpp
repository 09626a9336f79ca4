#include "screens/crate_hygiene/crate_hygiene_presenter.h"

#include "screens/components/tint.h"
#include "screens/crate_hygiene/hygiene_figures.h"

namespace tarnwick {

CrateHygienePresenter::CrateHygienePresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
{
    connect(&app, &AppState::figuresPrepared, this, &CrateHygienePresenter::open);
    connect(&app, &AppState::libraryChanged, this, &CrateHygienePresenter::look);
    connect(&app, &AppState::cratesChanged, this, &CrateHygienePresenter::look);
    open();
}

void CrateHygienePresenter::open()
{
    if (m_hygiene)
        return;
    if (m_app.hasHygiene())
        readLibrary();
    else
        m_app.prepareHygiene();
}

/// What has just been tidied must not stay on show until the rest is worked out.
void CrateHygienePresenter::look()
{
    if (m_hygiene)
        readLibrary();
    else
        open();
}

void CrateHygienePresenter::readLibrary()
{
    m_hygiene = m_app.hygiene();
    m_rows.setHygiene(m_hygiene);
    Q_EMIT changed();
}

int CrateHygienePresenter::tintOf(size_t count)
{
    return count == 0 ? Tint::Good : Tint::Warn;
}

void CrateHygienePresenter::act(const QString &key)
{
    const auto row = m_rows.rowOf(key);
    if (!row)
        return;
    // Kept over the command: with the change come others.
    const auto hygiene = m_hygiene;
    switch (row->kind) {
    case HygieneModel::Overlap:
        m_app.mergeCrates(hygiene->overlaps[row->entry]);
        break;
    case HygieneModel::Orphans:
        m_app.fileOrphans(HygieneFigures::orphanPaths(*hygiene));
        break;
    case HygieneModel::Variant:
        m_app.unifyGenre(hygiene->genreVariants[row->entry]);
        break;
    default:
        break;
    }
}

} // namespace tarnwick
