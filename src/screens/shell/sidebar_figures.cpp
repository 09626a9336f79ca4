#include "screens/shell/sidebar_figures.h"

#include "foundation/byte_format.h"

using namespace Qt::StringLiterals;

namespace tarnwick::SidebarFigures {

namespace {

std::optional<QString> unlessZero(int count)
{
    return count < 1 ? std::nullopt : std::optional(QString::number(count));
}

} // namespace

std::optional<QString> sidebarCount(Screen screen, const Derived *derived, int changes)
{
    if (!derived)
        return std::nullopt;
    switch (screen) {
    case Screen::LibraryScore:
        return QString::number(derived->score);
    case Screen::Health:
        return u"%1m"_s.arg(derived->estimatedMinutes());
    case Screen::FixQueue:
        return QString::number(derived->duplicateExcess + derived->missing);
    case Screen::Duplicates:
        return unlessZero(int(derived->duplicateGroups.size()));
    case Screen::Missing:
        return unlessZero(derived->missing);
    case Screen::TrackId:
        return unlessZero(derived->total - derived->withGenre);
    case Screen::ChangeLog:
        return unlessZero(changes);
    default:
        return std::nullopt;
    }
}

Totals totalsOf(const Derived &derived)
{
    return {QString::number(derived.total), ByteFmt::string(derived.onDiskBytes),
            ByteFmt::string(derived.reclaimableBytes)};
}

} // namespace tarnwick::SidebarFigures
