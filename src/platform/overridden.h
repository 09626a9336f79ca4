#pragma once

#include <mutex>
#include <optional>
#include <utility>

namespace tarnwick::platform {

/// What a test has put in the place of something that the machine tells, if it has. Set by the
/// test, read on any thread.
template <typename T>
class Overridden
{
public:
    void set(T value)
    {
        const std::scoped_lock lock(m_mutex);
        m_value = std::move(value);
    }
    void reset()
    {
        const std::scoped_lock lock(m_mutex);
        m_value.reset();
    }
    std::optional<T> value() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_value;
    }

private:
    mutable std::mutex m_mutex;
    std::optional<T> m_value;
};

} // namespace tarnwick::platform
