#include "cli/command_table.h"

#include "cli/crate_reports.h"
#include "cli/export_command.h"
#include "cli/probe_command.h"
#include "cli/reading_commands.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

const QList<CommandInfo> &commands()
{
    static const QList<CommandInfo> table = {
        {.name = u"libraries"_s,
         .summary = u"List the libraries of this machine."_s,
         .run = runLibraries},
        {.name = u"scan"_s,
         .scans = Scans::Yes,
         .options = {{u"no-tags"_s, {}, u"leave the audio files unopened"_s}},
         .summary = u"Scan a library and list its tracks."_s,
         .run = runScan},
        {.name = u"score"_s,
         .scans = Scans::Yes,
         .summary = u"Score a library on its six dimensions."_s,
         .run = runScore},
        {.name = u"crates"_s,
         .scans = Scans::Yes,
         .summary = u"List the crates of a library."_s,
         .run = runCrates},
        {.name = u"hygiene"_s,
         .scans = Scans::Yes,
         .summary = u"Find what could be tidied about crates and genres."_s,
         .run = runHygiene},
        {.name = u"gig"_s,
         .scans = Scans::Yes,
         .options = {{u"crate"_s, u"NAME"_s, u"a crate of the set, as often as needed"_s}},
         .summary = u"Check whether a set of crates can be played."_s,
         .run = runGig},
        {.name = u"drift"_s,
         .argumentUsage = u"TARGET FOLDER"_s,
         .leastArguments = 2,
         .mostArguments = 2,
         .scans = Scans::Yes,
         .summary = u"Compare a library with an earlier export in a folder."_s,
         .check = checkExportTarget,
         .run = runDrift},
        {.name = u"export"_s,
         .argumentUsage = u"TARGET FOLDER"_s,
         .leastArguments = 2,
         .mostArguments = 2,
         .scans = Scans::Yes,
         .summary = u"Export a library (engine, rekordbox or seratoBackup)."_s,
         .check = checkExportTarget,
         .run = runExport},
        {.name = u"probe"_s,
         .argumentUsage = u"FILE"_s,
         .leastArguments = 1,
         .mostArguments = 1,
         .summary = u"Show what the tags of one audio file hold."_s,
         .run = runProbe},
    };
    return table;
}

const CommandInfo *commandNamed(const QString &name)
{
    for (const CommandInfo &command : commands()) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

} // namespace tarnwick::cli
