#pragma once

#include "foundation/result.h"

#include <QList>
#include <QString>

namespace tarnwick::cli {

class Session;
struct CommandLine;

/// How a run ends.
enum class Status {
    Done = 0,
    Refused = 1,   ///< refused or failed
    WrongUsage = 2 ///< wrong usage, or a path, key, name or id that names nothing
};

/// Whether a command scans a library before it acts.
enum class Scans { No, Yes };

/// An option of one command.
struct OptionInfo
{
    QString name;      ///< without the hyphens
    QString valueName; ///< empty for a plain switch
    QString summary;
};

/// One command of the program.
struct CommandInfo
{
    QString name = {};          ///< one word, or two of which many share the first
    QString argumentUsage = {}; ///< as in "PATH FILE"; empty for none
    int leastArguments = 0;
    int mostArguments = 0; ///< -1 for any number
    Scans scans = Scans::No;
    QList<OptionInfo> options = {};
    QString summary = {};
    /// Finds what is wrong with the arguments as such, ahead of any work.
    Done (*check)(const CommandLine &line) = nullptr;
    Status (*run)(Session &session) = nullptr;
};

/// Every command, in the order in which help lists them.
const QList<CommandInfo> &commands();

/// Null for a name that no command has.
const CommandInfo *commandNamed(const QString &name);

} // namespace tarnwick::cli
