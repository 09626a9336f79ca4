#include "platform/clock.h"

#include "platform/overridden.h"

namespace tarnwick::platform {

namespace {

Overridden<QDateTime> stopped;

} // namespace

QDateTime now()
{
    const auto moment = stopped.value();
    return moment ? *moment : QDateTime::currentDateTimeUtc();
}

ScopedClock::ScopedClock(const QDateTime &moment)
{
    stopped.set(moment.toUTC());
}

ScopedClock::~ScopedClock()
{
    stopped.reset();
}

void ScopedClock::set(const QDateTime &moment)
{
    stopped.set(moment.toUTC());
}

} // namespace tarnwick::platform
