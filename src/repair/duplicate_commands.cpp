#include "app/app_state.h"
#include "platform/files.h"
#include "repair/duplicate_plan.h"
#include "repair/write_run.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The file that must not move, without the links on the way to it; nothing where no member is
/// kept.
std::optional<QString> fileToKeep(const DuplicateGroup &group, const QUuid &keeperId)
{
    const auto keeper =
        std::find_if(group.members.begin(), group.members.end(),
                     [&](const ScannedTrack &member) { return member.id() == keeperId; });
    if (keeper == group.members.end())
        return std::nullopt;
    return platform::canonicalPath(keeper->track.absolutePath());
}

} // namespace

void AppState::resolveDuplicates(const DuplicateGroup &group, const QUuid &keeperId)
{
    if (!mayWrite(u"Close Serato before removing duplicates."_s))
        return;
    const std::vector<ScannedTrack> losers = DuplicatePlan::losers(group, keeperId);
    if (losers.empty())
        return;
    WriteRun run(*this);
    run.snapshot(DuplicatePlan::reason(group, losers.size()));
    const auto kept = fileToKeep(group, keeperId);
    int movedFiles = 0;
    quint64 movedBytes = 0;
    for (const ScannedTrack &loser : losers) {
        // Two records of one file: it is the keeper's, and only the second record goes.
        const QString path = loser.track.absolutePath();
        const bool moves = !kept || platform::canonicalPath(path) != kept;
        std::optional<QString> holdingId;
        if (moves) {
            const auto held = m_holding.hold(path, DuplicatePlan::holdingReason(group));
            if (!run.wentWell(held))
                continue;
            holdingId = held->id;
        }
        const bool removed = run.editDatabase([&](SeratoDocument &document) {
            return document.removeTrack(loser.track.relativePath);
        });
        if (!removed)
            continue;
        run.remove(loser.id());
        run.log(DuplicatePlan::resolved(loser, holdingId));
        movedFiles += moves ? 1 : 0;
        movedBytes += moves ? loser.onDiskSizeBytes : 0;
    }
    if (movedFiles > 0)
        run.succeed(DuplicatePlan::summary(movedFiles, movedBytes));
}

void AppState::markNotDuplicate(const DuplicateGroup &group)
{
    m_ignoredDupeKeys.insert(group.key);
    libraryHasChanged();
    showToast(u"Marked as not a duplicate"_s);
}

} // namespace tarnwick
