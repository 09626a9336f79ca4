#include "screens/safety/library_safety_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::LibrarySafetyFigures {

LocationState stateOf(const SeratoLibrary::Location &location,
                      const std::optional<SeratoLibrary::Location> &loaded)
{
    if (!location.isOnline)
        return LocationState::Offline;
    if (!location.hasDatabase)
        return LocationState::NoDatabase;
    return loaded && loaded->id() == location.id() ? LocationState::Loaded : LocationState::Ready;
}

QString symbolOf(LocationState state)
{
    switch (state) {
    case LocationState::Offline:
        return u"internaldrive"_s;
    case LocationState::NoDatabase:
        return u"questionmark.folder"_s;
    case LocationState::Loaded:
        return u"checkmark.circle.fill"_s;
    case LocationState::Ready:
        return u"internaldrive.fill"_s;
    }
    Q_UNREACHABLE();
}

QString textOf(LocationState state)
{
    switch (state) {
    case LocationState::Offline:
        return u"Offline — reconnect the drive"_s;
    case LocationState::NoDatabase:
        return u"No Serato database here"_s;
    case LocationState::Loaded:
        return u"Loaded and scanned"_s;
    case LocationState::Ready:
        return u"Ready to scan"_s;
    }
    Q_UNREACHABLE();
}

bool isDone(qsizetype step, const Standing &standing)
{
    switch (step) {
    case 0:
        return standing.hasFigures;
    case 1:
        return !standing.seratoRunning;
    case 2:
        return standing.hasResult;
    case snapshotStep:
        return standing.hasSnapshot;
    default:
        return true;
    }
}

} // namespace tarnwick::LibrarySafetyFigures
