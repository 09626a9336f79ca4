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

} // namespace

QString bashCompletion()
{
    QStringList names;
    QString cases;
    for (const CommandInfo &command : commands()) {
        names.append(command.name);
        cases += u"    %1) options='%2'; files=%3 ;;\n"_s.arg(
            command.name, optionsOf(command), takesFiles(command) ? u"yes"_s : u"no"_s);
    }
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
           "      command=${COMP_WORDS[i]}\n"
           "      break\n"
           "    fi\n"
           "  done\n"
           "  case $command in\n"
           "    '') options='"_s +
           globalOptions() + u' ' + names.join(u' ') + u"' ;;\n"_s + cases +
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
        names += u"    '%1:%2'\n"_s.arg(command.name, described(command.summary));
        const QString rest = takesFiles(command) ? u"'*:file:_files'"_s : u"'*: : '"_s;
        cases += u"    %1)\n      _arguments $global%2 \\\n        %3 ;;\n"_s.arg(
            command.name, zshOptions(command), rest);
    }
    return u"#compdef tarnwick-cli\n"
           "# Completion of tarnwick-cli for zsh.\n"
           "_tarnwick-cli() {\n"
           "  local context state line\n"
           "  local -a global commands\n"
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
