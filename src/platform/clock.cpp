#include "platform/clock.h"

#include <mutex>
#include <optional>

namespace tarnwick::platform {

namespace {

std::mutex stoppedMutex;
std::optional<QDateTime> stopped;

void stopAt(const std::optional<QDateTime> &moment)
{
    const std::scoped_lock lock(stoppedMutex);
    stopped = moment;
}

} // namespace

QDateTime now()
{
    const std::scoped_lock lock(stoppedMutex);
    return stopped ? *stopped : QDateTime::currentDateTimeUtc();
}

ScopedClock::ScopedClock(const QDateTime &moment)
{
    stopAt(moment.toUTC());
}

ScopedClock::~ScopedClock()
{
    stopAt(std::nullopt);
}

void ScopedClock::set(const QDateTime &moment)
{
    stopAt(moment.toUTC());
}

} // namespace tarnwick::platform
