#pragma once

#include <functional>

namespace tarnwick::platform {

/// Lets the program end of its own accord where the system tells it to: as a session ends, by a
/// service manager, by Ctrl+C in a terminal. From then on the first such signal calls `end` from
/// the event loop; the next one of its kind ends the process on the spot. To be called once, after
/// the application object.
void onEndSignal(std::function<void()> end);

} // namespace tarnwick::platform
