#include "cli/completions.h"

#include "cli/command_table.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

const QString &globalOptions()
{
    static const QString options = u"--library --json --help --version"_s;
    return options;
}

QString optionsOf(const CommandInfo &command)
{
    QString options = globalOptions();
    for (const OptionInfo &option : command.options)
        options += u" --"_s + option.name;
    return options;
}

/// Whether an argument of the command is a file or a folder of the file system. A PATH is a
/// track's.
bool takesFiles(const CommandInfo &command)
{
    return command.argumentUsage.contains(u"FILE"_s) || command.argumentUsage.contains(u"FOLDER"_s);
}

/// For the inside of single quotes, in either shell.
QString quoted(const QString &text)
{
    return QString(text).replace(u'\'', u"'\\''"_s);
}

/// Summaries stand behind a colon, and options within brackets.
QString described(const QString &text)
{
    return quoted(text).replace(u':', u"\\:"_s).replace(u'[', u"\\["_s).replace(u']', u"\\]"_s);
}

QString zshOptions(const CommandInfo &command)
{
    QString lines;
    for (const OptionInfo &option : command.options) {
        const QString value =
            option.valueName.isEmpty() ? QString() : u":%1: "_s.arg(option.valueName);
        lines += u" \\\n        '*--%1[%2]%3'"_s.arg(option.name, described(option.summary), value);
    }
    return lines;
}

QString firstWord(const CommandInfo &command)
{
    return command.name.section(u' ', 0, 0);
}

/// The second word of a name; empty where it has one.
QString secondWord(const CommandInfo &command)
{
    return command.name.section(u' ', 1, 1);
}

/// First words of names that have two, each once.
QStringList groups()
{
    QStringList found;
    for (const CommandInfo &command : commands()) {
        if (!secondWord(command).isEmpty())
            found.append(firstWord(command));
    }
    found.removeDuplicates();
    return found;
}

QList<CommandInfo> commandsOf(const QString &group)
{
    QList<CommandInfo> found = commands();
    found.removeIf([&group](const CommandInfo &command) {
        return secondWord(command).isEmpty() || firstWord(command) != group;
    });
    return found;
}

QString bashCases()
{
    QString cases;
    for (const CommandInfo &command : commands()) {
        cases += u"    '%1') options='%2'; files=%3 ;;\n"_s.arg(
            command.name, optionsOf(command), takesFiles(command) ? u"yes"_s : u"no"_s);
    }
    for (const QString &group : groups()) {
        QString options = globalOptions();
        for (const CommandInfo &command : commandsOf(group))
            options += u' ' + secondWord(command);
        cases += u"    '%1') options='%2' ;;\n"_s.arg(group, options);
    }
    return cases;
}

/// What completes the arguments behind a name.
QString zshArguments(const CommandInfo &command)
{
    const QString rest = takesFiles(command) ? u"'*:file:_files'"_s : u"'*: : '"_s;
    return u"      _arguments $global%1 \\\n        %2 ;;\n"_s.arg(zshOptions(command), rest);
}

QString zshGroup(const QString &group)
{
    QString parts;
    QString cases;
    for (const CommandInfo &command : commandsOf(group)) {
        parts += u"        '%1:%2'\n"_s.arg(secondWord(command), described(command.summary));
        cases += u"      %1)\n"_s.arg(secondWord(command)) + zshArguments(command);
    }
    return u"    %1)\n"
           "      parts=(\n%2      )\n"
           "      if (( CURRENT == 2 )); then\n"
           "        _describe command parts\n"
           "        return\n"
           "      fi\n"
           "      shift words; (( CURRENT-- ))\n"
           "      case $words[1] in\n%3"
           "      esac ;;\n"_s.arg(group, parts, cases);
}

} // namespace

QString bashCompletion()
{
    QStringList names;
    for (const CommandInfo &command : commands())
        names.append(firstWord(command));
    names.removeDuplicates();
    return u"# Completion of tarnwick-cli for bash.\n"
           "_tarnwick_cli() {\n"
           "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
           "  local command= options= files=no i\n"
           "  COMPREPLY=()\n"
           "  if [ \"$before\" = --library ]; then\n"
           "    mapfile -t COMPREPLY < <(compgen -d -- \"$word\")\n"
           "    return\n"
           "  fi\n"
           "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "    if [ \"${COMP_WORDS[i]}\" = --library ]; then\n"
           "      ((i++))\n"
           "    elif [[ ${COMP_WORDS[i]} != -* ]]; then\n"
           "      command=${command:+$command }${COMP_WORDS[i]}\n"
           "      [[ ' "_s +
           groups().join(u' ') +
           u" ' = *\" $command \"* ]] || break\n"
           "    fi\n"
           "  done\n"
           "  case $command in\n"
           "    '') options='"_s +
           globalOptions() + u' ' + names.join(u' ') + u"' ;;\n"_s + bashCases() +
           u"  esac\n"
           "  mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
           "  if [ $files = yes ] && [[ $word != -* ]]; then\n"
           "    mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
           "  fi\n"
           "}\n"
           "complete -o filenames -F _tarnwick_cli tarnwick-cli\n"_s;
}

QString zshCompletion()
{
    QString names;
    QString cases;
    for (const CommandInfo &command : commands()) {
        if (!secondWord(command).isEmpty())
            continue;
        names += u"    '%1:%2'\n"_s.arg(command.name, described(command.summary));
        cases += u"    %1)\n"_s.arg(command.name) + zshArguments(command);
    }
    for (const QString &group : groups()) {
        QStringList parts;
        for (const CommandInfo &command : commandsOf(group))
            parts.append(secondWord(command));
        names += u"    '%1:%2'\n"_s.arg(group, parts.join(u", "_s));
        cases += zshGroup(group);
    }
    return u"#compdef tarnwick-cli\n"
           "# Completion of tarnwick-cli for zsh.\n"
           "_tarnwick-cli() {\n"
           "  local context state line\n"
           "  local -a global commands parts\n"
           "  global=(\n"
           "    '--library[the _Serato_ folder to work with]:folder:_files -/'\n"
           "    '--json[print one JSON object]'\n"
           "    '--help[show the help]'\n"
           "    '--version[show the version]'\n"
           "  )\n"
           "  commands=(\n"_s +
           names +
           u"  )\n"
           "  _arguments -C $global '1: :->command' '*:: :->arguments'\n"
           "  case $state in\n"
           "  command) _describe command commands ;;\n"
           "  arguments)\n"
           "    case $line[1] in\n"_s +
           cases +
           u"    esac ;;\n"
           "  esac\n"
           "}\n"
           "_tarnwick-cli \"$@\"\n"_s;
}

} // namespace tarnwick::cli
