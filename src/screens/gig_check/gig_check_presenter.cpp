#include "screens/gig_check/gig_check_presenter.h"

#include "platform/background.h"

namespace tarnwick {

GigCheckPresenter::GigCheckPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_destinations(GigCheckFigures::destinations({}))
{
    m_crates.setCrates(app.crates());
    m_crates.pickAll();
    check();
    connect(&app, &AppState::libraryChanged, this, &GigCheckPresenter::check);
    connect(&app, &AppState::cratesChanged, this, &GigCheckPresenter::readCrates);
    lookForDrives();
}

int GigCheckPresenter::verdictTint() const
{
    if (!m_report)
        return Tint::Ink;
    switch (m_report->verdict) {
    case GigCheck::Verdict::Ready:
        return Tint::Good;
    case GigCheck::Verdict::GoodEnough:
        return Tint::Warn;
    case GigCheck::Verdict::NotYet:
        return Tint::Accent;
    }
    Q_UNREACHABLE();
}

QString GigCheckPresenter::sentence() const
{
    return m_report ? GigCheckFigures::sentence(*m_report, m_destination) : QString();
}

bool GigCheckPresenter::isGood() const
{
    // Nothing is promised of a choice that has not been checked yet.
    return m_answered == m_checks && m_report && m_report->tracks > 0 &&
           m_report->verdict == GigCheck::Verdict::Ready;
}

void GigCheckPresenter::toggle(const QString &crate)
{
    m_crates.toggle(crate);
    check();
}

void GigCheckPresenter::lookForDrives()
{
    platform::runInBackground(
        platform::Priority::UserInitiated, this, [] { return platform::volumes(); },
        [this](const QList<platform::Volume> &volumes) {
            const QStringList found = GigCheckFigures::destinations(volumes);
            if (found == m_destinations)
                return;
            m_destinations = found;
            Q_EMIT destinationsChanged();
        });
}

void GigCheckPresenter::chooseDestination(const QString &destination)
{
    m_destination = destination;
    Q_EMIT changed();
}

void GigCheckPresenter::mendBlocker(int row)
{
    mend(m_blockers, row);
}

void GigCheckPresenter::mendPolish(int row)
{
    mend(m_polish, row);
}

void GigCheckPresenter::mend(const GigFindingModel &findings, int row)
{
    if (row >= 0 && row < findings.rowCount())
        m_app.setSelection(findings.jumpOf(row));
}

void GigCheckPresenter::readCrates()
{
    m_crates.setCrates(m_app.crates());
    check();
}

void GigCheckPresenter::check()
{
    const int ticket = ++m_checks;
    Q_EMIT changed();
    platform::runInBackground(
        platform::Priority::UserInitiated, this,
        [result = m_app.result(), crates = m_app.crates(), picked = m_crates.picked()] {
            return result ? GigCheckFigures::reportOf(*result, crates, picked)
                          : GigCheckFigures::Report();
        },
        [this, ticket](const GigCheckFigures::Report &report) {
            if (ticket == m_checks)
                show(report);
        });
}

void GigCheckPresenter::show(const GigCheckFigures::Report &report)
{
    m_answered = m_checks;
    m_report = report;
    m_blockers.setFindings(report.blockers);
    m_polish.setFindings(report.polish);
    Q_EMIT changed();
}

} // namespace tarnwick
