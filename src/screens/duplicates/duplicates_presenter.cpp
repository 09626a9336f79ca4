#include "screens/duplicates/duplicates_presenter.h"

#include "foundation/byte_format.h"

namespace tarnwick {

DuplicatesPresenter::DuplicatesPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
    , m_rows(app)
{
    connect(&app, &AppState::libraryChanged, this, &DuplicatesPresenter::readLibrary);
    readLibrary();
}

void DuplicatesPresenter::keep(const QString &group, int place)
{
    const DuplicateGroup *found = m_rows.groupOf(group);
    if (found && place >= 0 && size_t(place) < found->members.size())
        m_rows.setKeeper(*found, found->members[size_t(place)].id());
}

void DuplicatesPresenter::resolve(const QString &group)
{
    // By value: the figures go with the change.
    if (const DuplicateGroup *found = m_rows.groupOf(group))
        m_app.resolveDuplicates(DuplicateGroup(*found), m_rows.keeperOf(*found));
}

void DuplicatesPresenter::markNotDuplicate(const QString &group)
{
    if (const DuplicateGroup *found = m_rows.groupOf(group))
        m_app.markNotDuplicate(DuplicateGroup(*found));
}

void DuplicatesPresenter::readLibrary()
{
    m_rows.readLibrary();
    if (const auto derived = m_app.derived()) {
        m_groups = QString::number(derived->duplicateGroups.size());
        m_redundant = QString::number(derived->duplicateExcess);
        m_reclaimable = ByteFmt::string(derived->reclaimableBytes);
    }
    Q_EMIT changed();
}

} // namespace tarnwick
