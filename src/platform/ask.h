#pragma once

#include "platform/background.h"

#include <chrono>
#include <future>
#include <memory>
#include <utility>

namespace tarnwick::platform {

/// Runs `work` in the background for a caller that waits for the answer, but not for ever. A `work`
/// whose answer nobody waits for any longer goes on, so it must own all that it uses.
template <typename Work>
auto ask(Work work) -> std::future<decltype(work())>
{
    const auto answer = std::make_shared<std::promise<decltype(work())>>();
    startInBackground(Priority::UserInitiated,
                      [answer, work = std::move(work)] { answer->set_value(work()); });
    return answer->get_future();
}

/// How long a caller waits for an answer from across the network, where it has to wait at all.
constexpr std::chrono::milliseconds patience{1000};

} // namespace tarnwick::platform
