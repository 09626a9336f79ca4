#include "cli/command_line.h"

#include "cli/command_table.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

const QString libraryOption = u"library"_s;
const QString jsonOption = u"json"_s;
const QString helpOption = u"help"_s;
const QString versionOption = u"version"_s;

/// An option of the program itself or of any command: an option means the same number of values
/// wherever it stands, so that it can be read ahead of its command.
QList<QCommandLineOption> allOptions()
{
    QList<QCommandLineOption> options = {
        {libraryOption, u"the _Serato_ folder to work with"_s, u"FOLDER"_s},
        {jsonOption, u"print one JSON object"_s},
        {{u"h"_s, helpOption}, u"show this help"_s},
        {versionOption, u"show the version"_s},
    };
    QStringList known;
    for (const CommandInfo &command : commands()) {
        for (const OptionInfo &option : command.options) {
            if (!known.contains(option.name))
                options.append({option.name, option.summary, option.valueName});
            known.append(option.name);
        }
    }
    return options;
}

Failure wrongOption(const CommandInfo &command, const QString &option)
{
    return {
        u"'%1' has no option '--%2' (see 'tarnwick-cli %1 --help')"_s.arg(command.name, option)};
}

/// The command's own options out of all that were given.
Result<QHash<QString, QStringList>> optionsOf(const CommandInfo &command,
                                              const QCommandLineParser &parser)
{
    const QStringList common = {libraryOption, jsonOption, helpOption, u"h"_s, versionOption};
    QHash<QString, QStringList> options;
    for (const QString &name : parser.optionNames()) {
        if (common.contains(name))
            continue;
        const auto isMeant = [&](const OptionInfo &option) { return option.name == name; };
        if (std::none_of(command.options.begin(), command.options.end(), isMeant))
            return tl::unexpected(wrongOption(command, name));
        options.insert(name, parser.values(name));
    }
    return options;
}

std::optional<Failure> wrongCount(const CommandInfo &command, qsizetype given)
{
    const bool tooMany = command.mostArguments >= 0 && given > command.mostArguments;
    if (given >= command.leastArguments && !tooMany)
        return std::nullopt;
    const QString complaint = tooMany ? u"too many arguments"_s : u"an argument is missing"_s;
    return Failure{
        u"%1: usage: tarnwick-cli %2 %3"_s.arg(complaint, command.name, command.argumentUsage)
            .trimmed()};
}

/// How many words the name of a command has that begins so.
qsizetype wordsInName(const QString &first)
{
    const auto beginsSo = [start = first + u' '](const CommandInfo &command) {
        return command.name.startsWith(start);
    };
    return std::any_of(commands().begin(), commands().end(), beginsSo) ? 2 : 1;
}

Result<CommandLine> withCommand(CommandLine line, const QCommandLineParser &parser)
{
    const QStringList given = parser.positionalArguments();
    const QStringList name = given.first(qMin(given.size(), wordsInName(given.first())));
    line.command = commandNamed(name.join(u' '));
    if (!line.command)
        return failure(u"unknown command '%1' (see 'tarnwick-cli --help')"_s.arg(name.join(u' ')));
    auto options = optionsOf(*line.command, parser);
    if (!options)
        return tl::unexpected(options.error());
    line.options = *options;
    line.arguments = given.sliced(name.size());
    if (line.help)
        return line;
    if (const auto complaint = wrongCount(*line.command, line.arguments.size()))
        return tl::unexpected(*complaint);
    return line;
}

} // namespace

QString CommandLine::value(const QString &option, const QString &fallback) const
{
    return options.contains(option) ? options.value(option).last() : fallback;
}

Result<CommandLine> parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addOptions(allOptions());
    if (!parser.parse(QStringList(u"tarnwick-cli"_s) + arguments))
        return failure(parser.errorText() + u" (see 'tarnwick-cli --help')"_s);
    CommandLine line;
    line.json = parser.isSet(jsonOption);
    line.help = parser.isSet(helpOption);
    line.version = parser.isSet(versionOption);
    if (parser.isSet(libraryOption))
        line.library = parser.value(libraryOption);
    if (!parser.positionalArguments().isEmpty())
        return withCommand(line, parser);
    if (!line.help && !line.version)
        return failure(u"no command given (see 'tarnwick-cli --help')"_s);
    return line;
}

QString programHelp()
{
    QString help =
        u"Usage: tarnwick-cli [--library FOLDER] [--json] COMMAND [ARGUMENTS]\n\n"
        "Cares for a Serato library from the command line.\n\nOptions:\n"
        "  --library FOLDER  the _Serato_ folder to work with (default: the one that the\n"
        "                    program would take)\n"
        "  --json            print one JSON object\n"
        "  -h, --help        show this help, or that of a command\n"
        "  --version         show the version\n\nCommands:\n"_s;
    for (const CommandInfo &command : commands())
        help += u"  %1%2\n"_s.arg(command.name.leftJustified(20), command.summary);
    return help;
}

QString commandHelp(const CommandInfo &command)
{
    QString usage = u"Usage: tarnwick-cli "_s + command.name;
    for (const OptionInfo &option : command.options)
        usage += u" [--%1]"_s.arg((option.name + u' ' + option.valueName).trimmed());
    usage += (u' ' + command.argumentUsage);
    QString help = usage.trimmed() + u"\n\n"_s + command.summary + u'\n';
    if (!command.options.isEmpty())
        help += u"\nOptions:\n"_s;
    for (const OptionInfo &option : command.options) {
        const QString shown = u"--%1 %2"_s.arg(option.name, option.valueName).trimmed();
        help += u"  %1  %2\n"_s.arg(shown.leftJustified(20), option.summary);
    }
    return help;
}

} // namespace tarnwick::cli
