#include "screens/gig_run/gig_run_actions.h"

namespace tarnwick::GigRunActions {

using GigRunFigures::Outcome;
using GigRunFigures::Step;

namespace {

Outcome level(AppState &app, const Derived &derived)
{
    const std::vector<GainItem> items = GigRunFigures::levelling(derived);
    app.normalizeAllLoudness(items);
    return GigRunFigures::StepDone{GigRunFigures::levelled(items.size())};
}

Outcome dedupe(AppState &app, const Derived &derived)
{
    const AppState::Gathering gathering(app);
    for (const DuplicateGroup &group : derived.duplicateGroups) {
        if (!group.members.empty())
            app.resolveDuplicates(group, group.members.front().id());
    }
    return GigRunFigures::StepDone{GigRunFigures::deduplicated(derived.duplicateExcess)};
}

} // namespace

Outcome runStep(AppState &app, Step step, const Derived &derived, Fixes fixes)
{
    Outcome found = GigRunFigures::findings(step, derived);
    if (fixes == Fixes::No || !app.canWrite() || GigRunFigures::isDone(found))
        return found;
    if (step == Step::Level)
        return level(app, derived);
    if (step == Step::Dedupe)
        return dedupe(app, derived);
    return found;
}

} // namespace tarnwick::GigRunActions
