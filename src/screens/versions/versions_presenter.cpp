#include "screens/versions/versions_presenter.h"

namespace tarnwick {

VersionsPresenter::VersionsPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
    , m_rows(app)
{
    connect(&app, &AppState::figuresPrepared, this, &VersionsPresenter::open);
    connect(&app, &AppState::libraryChanged, this, [this] {
        // Rows of an earlier library must not stay until the new ones are there.
        if (m_waits)
            open();
        else
            readLibrary();
    });
    open();
}

void VersionsPresenter::open()
{
    if (!m_waits)
        return;
    if (m_app.hasVersions())
        readLibrary();
    else
        m_app.prepareVersions();
}

void VersionsPresenter::readLibrary()
{
    m_waits = false;
    m_rows.readLibrary();
    Q_EMIT changed();
}

void VersionsPresenter::choose(const QString &group, int place)
{
    const VersionGroup *found = m_rows.groupOf(group);
    if (found && place >= 0 && size_t(place) < found->members.size())
        m_rows.setKeeper(*found, found->members[size_t(place)].id());
}

void VersionsPresenter::archive(const QString &group)
{
    const VersionGroup *found = m_rows.groupOf(group);
    if (!found)
        return;
    const QUuid keeper = m_rows.keeperOf(*found);
    if (!keeper.isNull())
        m_app.archiveVersions(VersionGroup(*found), keeper);
}

} // namespace tarnwick
