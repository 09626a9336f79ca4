#include "screens/fix_queue/fix_queue_presenter.h"

#include "screens/fix_queue/fix_actions.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

using FixQueueFigures::Issue;

FixQueuePresenter::FixQueuePresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
    , m_issues(app)
{
    connect(&app, &AppState::libraryChanged, this, &FixQueuePresenter::readLibrary);
    readLibrary();
}

QStringList FixQueuePresenter::filters() const
{
    QStringList labels;
    for (const FixQueueFigures::FilterInfo &info : FixQueueFigures::filters())
        labels.append(info.label);
    return labels;
}

void FixQueuePresenter::setFilter(int filter)
{
    if (filter < 0 || filter >= FixQueueFigures::filters().size() || filter == int(m_filter))
        return;
    m_filter = FixQueueFigures::filters().at(filter).filter;
    showFiltered();
}

QString FixQueuePresenter::fixAllTitle() const
{
    return u"Fix the %1 safe ones"_s.arg(m_safe);
}

QString FixQueuePresenter::emptyText() const
{
    if (m_issues.rowCount() > 0)
        return {};
    return m_queue.empty() ? u"Queue's empty — nothing needs fixing."_s
                           : u"Nothing matches this filter."_s;
}

void FixQueuePresenter::fix(const QString &key)
{
    const Issue *found = m_issues.issueOf(key);
    if (!found)
        return;
    // By value: the fix renews the rows.
    const Issue issue = *found;
    const auto derived = m_app.derived();
    FixActions::fix(m_app, *derived, issue);
}

void FixQueuePresenter::decide(const QString &key)
{
    if (const Issue *issue = m_issues.issueOf(key))
        m_app.setSelection(FixQueueFigures::jumpOf(*issue));
}

void FixQueuePresenter::fixAllSafe()
{
    FixActions::fixAllSafe(m_app);
}

void FixQueuePresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_hasLibrary = bool(derived);
    m_queue.clear();
    if (derived)
        m_queue = FixQueueFigures::issuesOf(*derived);
    m_safe = FixQueueFigures::safeCount(m_queue);
    showFiltered();
}

void FixQueuePresenter::showFiltered()
{
    std::vector<Issue> shown;
    std::copy_if(m_queue.begin(), m_queue.end(), std::back_inserter(shown),
                 [this](const Issue &issue) { return FixQueueFigures::passes(issue, m_filter); });
    m_issues.setIssues(std::move(shown));
    Q_EMIT changed();
}

} // namespace tarnwick
