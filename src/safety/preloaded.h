#pragma once

#include "platform/background.h"

#include <chrono>
#include <future>
#include <memory>
#include <utility>

namespace tarnwick {

/// A value that a background thread makes from now on, so that reading a large store doesn't hold
/// up the window. Whoever asks for it waits until it is there. The making goes on, and is let go,
/// if this object goes first.
template <typename T>
class Preloaded
{
public:
    template <typename Make>
    explicit Preloaded(Make make)
    {
        auto promise = std::make_shared<std::promise<std::shared_ptr<T>>>();
        m_value = promise->get_future().share();
        platform::startInBackground(
            platform::Priority::UserInitiated,
            [promise, make = std::move(make)] { promise->set_value(std::make_shared<T>(make())); });
    }

    T &operator*() const { return *m_value.get(); }
    T *operator->() const { return m_value.get().get(); }
    std::shared_ptr<T> shared() const { return m_value.get(); }

    /// True if nobody would have to wait.
    bool isReady() const
    {
        return !m_value.valid() ||
               m_value.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }

    /// Lets the value go: it must not be asked for any more. Copies keep theirs.
    void release() { m_value = {}; }

private:
    std::shared_future<std::shared_ptr<T>> m_value;
};

} // namespace tarnwick
