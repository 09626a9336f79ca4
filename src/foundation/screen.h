#pragma once

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwick {

/// Every screen of the window, those that are still to come included.
enum class Screen {
    LibraryScore,
    Health,
    LibrarySafety,
    FixQueue,
    Duplicates,
    Missing,
    Cues,
    Versions,
    TrackId,
    GigCheck,
    GigRun,
    Loudness,
    Stems,
    Hygiene,
    Suggestions,
    Signal,
    Transitions,
    Debrief,
    Booth,
    Community,
    Watch,
    ChangeLog,
    Export,
    Account,
};

/// What is fixed about a screen.
struct ScreenInfo
{
    Screen screen;
    QString rawValue; ///< the name by which the environment and the command line call it
    QString title;
    QString symbol;    ///< name of its icon
    QString phaseNote; ///< when it is due, shown while it is not built
    bool isImplemented;
};

/// All screens, in the order of the enumeration.
const QList<ScreenInfo> &allScreens();

const ScreenInfo &infoOf(Screen screen);

/// The screen of exactly this raw value, letter case included.
std::optional<Screen> screenFromRawValue(QStringView rawValue);

/// A heading of the sidebar and the screens below it, in sidebar order.
struct NavGroup
{
    QUuid id;
    QString title;
    QList<Screen> screens;
};

namespace Nav {

/// Built once, so that the groups' ids are stable for the process.
const QList<NavGroup> &groups();

} // namespace Nav

} // namespace tarnwick
