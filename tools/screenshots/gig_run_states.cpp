#include "screenshots/gig_run_states.h"

#include <QEventLoop>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int shownStep = 4;

/// Lets the run go on until the step has begun.
void waitForStep(GigRunPresenter &presenter, int step)
{
    const QModelIndex row = presenter.steps()->index(step);
    QEventLoop loop;
    QObject::connect(presenter.steps(), &RunStepModel::dataChanged, &loop, [&] {
        if (row.data(RunStepModel::RunningRole).toBool())
            loop.quit();
    });
    loop.exec();
}

} // namespace

bool takeGigRunStates(GigRunPresenter &presenter,
                      const std::function<bool(const QString &name)> &keep)
{
    presenter.start();
    waitForStep(presenter, shownStep);
    if (!keep(u"gigRunUnderWay"_s))
        return false;
    QEventLoop untilDone;
    QObject::connect(&presenter, &GigRunPresenter::runChanged, &untilDone, &QEventLoop::quit);
    untilDone.exec();
    return keep(u"gigRunDone"_s);
}

} // namespace tarnwick
