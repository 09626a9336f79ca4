#pragma once

#include "foundation/result.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwick::cli {

struct CommandInfo;

/// What the arguments of one run ask for.
struct CommandLine
{
    bool json = false;
    bool help = false;
    bool version = false;
    std::optional<QString> library;       ///< `--library`, as given
    const CommandInfo *command = nullptr; ///< null where only help or the version is asked for
    QStringList arguments;                ///< of the command, in order
    QHash<QString, QStringList> options;  ///< values of the command's options, by name

    bool has(const QString &option) const { return options.contains(option); }
    /// The last value given for an option; the default where it was not given.
    QString value(const QString &option, const QString &fallback = {}) const;
};

/// Reads the arguments behind the program's name. Fails with one line for the user where they are
/// wrong. Options may stand ahead of or behind the command; `--` ends them.
Result<CommandLine> parseCommandLine(const QStringList &arguments);

/// The program's help: usage and every command with its summary.
QString programHelp();

/// One command's help: usage, summary, options.
QString commandHelp(const CommandInfo &command);

} // namespace tarnwick::cli
