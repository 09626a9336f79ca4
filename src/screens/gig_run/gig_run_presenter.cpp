#include "screens/gig_run/gig_run_presenter.h"

#include "platform/pause.h"
#include "screens/gig_run/gig_run_actions.h"

namespace tarnwick {

using GigRunActions::Fixes;
using GigRunFigures::Step;

namespace {

/// The work of a step takes no time by comparison.
constexpr std::chrono::milliseconds pacing{380};

} // namespace

GigRunPresenter::GigRunPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
    , m_gate(app)
{
    connect(&app, &AppState::libraryChanged, this, &GigRunPresenter::readLibrary);
    connect(&app, &AppState::cratesChanged, this, &GigRunPresenter::readLibrary);
    readLibrary();
}

void GigRunPresenter::setApplyFixes(bool apply)
{
    if (apply == m_applyFixes)
        return;
    m_applyFixes = apply;
    Q_EMIT applyFixesChanged();
}

void GigRunPresenter::start()
{
    const auto derived = m_app.derived();
    if (isRunning() || !derived)
        return;
    m_run = UnderWay{derived};
    m_steps.reset();
    Q_EMIT runChanged();
    Q_EMIT sheetChanged();
    beginStep();
}

void GigRunPresenter::beginStep()
{
    m_steps.setState(std::get<UnderWay>(m_run).step, GigRunFigures::StepRunning{});
    platform::callAfter(pacing, this, [this] { endStep(); });
}

void GigRunPresenter::endStep()
{
    auto &[derived, step] = std::get<UnderWay>(m_run);
    const auto outcome =
        GigRunActions::runStep(m_app, Step(step), *derived, m_applyFixes ? Fixes::Yes : Fixes::No);
    m_steps.setState(step, GigRunFigures::stateOf(outcome));
    if (++step < GigRunFigures::stepCount) {
        beginStep();
        return;
    }
    m_run = Finished{};
    readSheet();
    Q_EMIT runChanged();
}

void GigRunPresenter::readLibrary()
{
    const auto derived = m_app.derived();
    m_summary = derived ? GigRunFigures::summary(derived->total, m_app.crates().size()) : QString();
    Q_EMIT libraryRead();
    if (hasSheet())
        readSheet();
}

void GigRunPresenter::readSheet()
{
    m_sheet = GigRunFigures::setSheet(*m_app.result(), int(m_app.crates().size()));
    Q_EMIT sheetChanged();
}

} // namespace tarnwick
