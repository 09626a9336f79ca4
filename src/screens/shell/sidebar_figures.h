#pragma once

#include "analysis/derived.h"
#include "foundation/screen.h"

#include <optional>

/// What the sidebar says about the library.
namespace tarnwick::SidebarFigures {

/// The badge of a screen's row; none for most, and for all while there is no library. `changes` is
/// the change log's count.
std::optional<QString> sidebarCount(Screen screen, const Derived *derived, int changes);

/// The three figures at the sidebar's foot.
struct Totals
{
    QString tracks;
    QString onDisk;
    QString reclaim;

    bool operator==(const Totals &) const = default;
};

Totals totalsOf(const Derived &derived);

} // namespace tarnwick::SidebarFigures
