#include "screens/track_id/track_id_actions.h"

#include "screens/track_id/track_id_figures.h"

namespace tarnwick::TrackIdActions {

void tagAllReady(AppState &app)
{
    const std::shared_ptr<const Derived> derived = app.derived();
    if (!derived)
        return;
    const AppState::Gathering gathering(app);
    for (const TrackIdFigures::Batch &batch : TrackIdFigures::batches(*derived))
        app.setGenreBatch(batch.tracks, batch.genre);
}

} // namespace tarnwick::TrackIdActions
