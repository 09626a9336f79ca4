#include "platform/pause.h"

#include <QPointer>
#include <QTimer>

#include <optional>
#include <utility>

namespace tarnwick::platform {

namespace {

struct HeldPause
{
    std::chrono::milliseconds length;
    QPointer<QObject> owner;
    std::function<void()> call;
};

/// Nothing while pauses pass by themselves.
std::optional<QList<HeldPause>> &heldPauses()
{
    static std::optional<QList<HeldPause>> held;
    return held;
}

QList<HeldPause> &heldAndAwaited()
{
    heldPauses()->removeIf([](const HeldPause &pause) { return !pause.owner; });
    return *heldPauses();
}

} // namespace

void callAfter(std::chrono::milliseconds pause, QObject *owner, std::function<void()> call)
{
    if (heldPauses())
        heldPauses()->append({pause, owner, std::move(call)});
    else
        QTimer::singleShot(pause, Qt::PreciseTimer, owner, std::move(call));
}

ScopedPauses::ScopedPauses()
{
    heldPauses().emplace();
}

ScopedPauses::~ScopedPauses()
{
    heldPauses().reset();
}

QList<std::chrono::milliseconds> ScopedPauses::underWay() const
{
    QList<std::chrono::milliseconds> lengths;
    for (const HeldPause &pause : std::as_const(heldAndAwaited()))
        lengths.append(pause.length);
    return lengths;
}

bool ScopedPauses::endNext()
{
    if (heldAndAwaited().isEmpty())
        return false;
    // By value: what is called may begin the next pause.
    const HeldPause pause = heldPauses()->takeFirst();
    pause.call();
    return true;
}

} // namespace tarnwick::platform
