#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <utility>

namespace tarnwick::platform {

/// How urgent a background task is.
enum class Priority {
    UserInitiated, ///< somebody waits for it: a scan, a snapshot, an export
    Utility,       ///< nobody does: filling the cue vault, reading the history
};

/// Starts `work` on a thread of the pool for its priority, at once: no task waits for another.
/// `work` must not throw. The process may end in the middle of it.
void startInBackground(Priority priority, std::function<void()> work);

/// Runs `call` on the main thread, from its event loop. May be called on any thread.
void callOnMainThread(std::function<void()> call);

/// Runs `work` in the background, then `then` with its result on the main thread; `then` is left
/// out if `owner` (an object of the main thread) has gone by then.
template <typename Work, typename Then>
void runInBackground(Priority priority, QObject *owner, Work work, Then then)
{
    const QPointer<QObject> guard(owner);
    startInBackground(priority, [guard, work = std::move(work), then = std::move(then)] {
        auto value = std::make_shared<decltype(work())>(work());
        callOnMainThread([guard, then, value] {
            if (guard)
                then(std::move(*value));
        });
    });
}

} // namespace tarnwick::platform
