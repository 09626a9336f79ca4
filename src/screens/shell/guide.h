#pragma once

#include <QString>

namespace tarnwick {

/// The first page of the user's guide, from the folder of the executable. The names are frozen:
/// installed programs have the same layout as built ones.
inline constexpr char16_t guidePlace[] = u"../share/tarnwick/guide/index.html";

/// Shows the guide in the program that the desktop has for pages. False where it is not installed.
bool showGuide();

} // namespace tarnwick
