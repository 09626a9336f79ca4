#pragma once

#include "analysis/scan_result.h"

#include <variant>

namespace tarnwick {

/// No scan is running and no library is on screen.
struct ChooseLibrary
{
    bool operator==(const ChooseLibrary &) const = default;
};

/// A scan has finished; the selected screen shows.
struct Ready
{
    bool operator==(const Ready &) const = default;
};

/// A scan is running.
struct Scanning
{
    ScanProgress progress;

    bool operator==(const Scanning &) const = default;
};

/// What the content area of the window is about.
using Phase = std::variant<ChooseLibrary, Ready, Scanning>;

} // namespace tarnwick
