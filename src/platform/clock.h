#pragma once

#include <QDateTime>

namespace tarnwick::platform {

/// The current moment in UTC. The only place that asks the clock, so that a test can stop it.
QDateTime now();

/// Stops the clock at a moment, or moves it there, for the guard's life. For tests.
class ScopedClock
{
public:
    explicit ScopedClock(const QDateTime &moment);
    ~ScopedClock();
    ScopedClock(const ScopedClock &) = delete;
    ScopedClock &operator=(const ScopedClock &) = delete;

    void set(const QDateTime &moment);
};

} // namespace tarnwick::platform
