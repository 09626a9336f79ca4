#include "library_plan.h"

#include "copy_plan.h"
#include "crate_plan.h"
#include "demo_random.h"
#include "fault_plan.h"
#include "path_plan.h"
#include "session_plan.h"
#include "song_plan.h"
#include "tag_plan.h"

#include <algorithm>

namespace tarnwick::demo {

namespace {

// Numbers of the random streams. They are part of what a seed means: add, don't renumber.
enum Stream : quint64 { Songs, Copies, Tags, Faults, Paths, Sessions, Crates };

} // namespace

LibraryPlan planLibrary(const LibraryWish &wish)
{
    const auto stream = [&wish](Stream number) { return Random(wish.seed, number); };
    LibraryPlan plan;
    const int copies = numberOfCopies(wish.tracks);
    plan.tracks = planSongs(wish.tracks - copies, stream(Songs));
    addCopies(plan.tracks, copies, stream(Copies));
    std::ranges::stable_sort(plan.tracks, {}, &TrackPlan::dateAdded);
    planTags(plan.tracks, wish.tagSizes, stream(Tags));
    addFaults(plan.tracks, stream(Faults));
    planPaths(plan.tracks, wish.home, stream(Paths));
    plan.sessions = planSessions(plan.tracks, wish.home, wish.today, stream(Sessions));
    plan.crates = planCrates(plan.tracks, wish.home, stream(Crates));
    return plan;
}

} // namespace tarnwick::demo
