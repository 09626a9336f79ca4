#include "screens/fix_queue/fix_actions.h"

namespace tarnwick::FixActions {

using FixQueueFigures::Issue;
using FixQueueFigures::Kind;

void fix(AppState &app, const Derived &derived, const Issue &issue)
{
    if (!FixQueueFigures::isFixable(issue, derived))
        return;
    if (issue.kind == Kind::Duplicate) {
        const DuplicateGroup &group = derived.duplicateGroups[issue.index];
        app.resolveDuplicates(group, group.members.front().id());
    } else {
        app.setGenre(derived.result().tracks[issue.index], issue.suggestion->genre);
    }
}

void fixAllSafe(AppState &app)
{
    const std::shared_ptr<const Derived> derived = app.derived();
    if (!derived)
        return;
    const AppState::Gathering gathering(app);
    for (const Issue &issue : FixQueueFigures::issuesOf(*derived)) {
        if (issue.safe)
            fix(app, *derived, issue);
    }
}

} // namespace tarnwick::FixActions
