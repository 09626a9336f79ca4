#pragma once

#include <QObject>

#include <chrono>
#include <functional>

namespace tarnwick::platform {

/// Calls back from the event loop once the pause is over; not at all if `owner` has gone by then.
/// On the main thread alone.
void callAfter(std::chrono::milliseconds pause, QObject *owner, std::function<void()> call);

/// Holds all pauses that begin in the guard's life until a test ends them. For tests.
class ScopedPauses
{
public:
    ScopedPauses();
    ~ScopedPauses();
    ScopedPauses(const ScopedPauses &) = delete;
    ScopedPauses &operator=(const ScopedPauses &) = delete;

    /// How long those are that are under way, in the order in which they began.
    QList<std::chrono::milliseconds> underWay() const;
    /// Ends the one that began first; false where none is under way.
    bool endNext();
};

} // namespace tarnwick::platform
