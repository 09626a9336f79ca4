#include "cli/command_line.h"
#include "cli/output.h"
#include "cli/session.h"
#include "platform/environment.h"
#include "platform/terminal.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace tarnwick;

namespace {

QStringList argumentsOf(int count, char **values)
{
    QStringList arguments;
    for (int i = 1; i < count; ++i)
        arguments.append(QString::fromLocal8Bit(values[i]));
    return arguments;
}

/// Ends the process there and then, with what the program holds still in memory: a large library
/// would take a while to be torn down.
[[noreturn]] void end(cli::Output &out, cli::Status status)
{
    out.flush();
    if (!out.isSound()) {
        cli::Session::complain(QStringLiteral("the output can't be written"));
        status = status == cli::Status::Done ? cli::Status::Refused : status;
    }
    std::fflush(nullptr);
    std::_Exit(int(status));
}

/// Colours are for people who watch, and have not asked to be spared them.
cli::Output::Colours coloursOfStdout()
{
    const bool isSpared = !platform::environmentVariable("NO_COLOR").value_or(QString()).isEmpty();
    return platform::isTerminal(stdout) && !isSpared ? cli::Output::Colours::Yes
                                                     : cli::Output::Colours::No;
}

[[noreturn]] void runCommandLine(const cli::CommandLine &line)
{
    cli::Output out(stdout, coloursOfStdout());
    if (line.help) {
        out.text(line.command ? cli::commandHelp(*line.command) : cli::programHelp());
        end(out, cli::Status::Done);
    }
    if (line.version) {
        out.line(QStringLiteral("tarnwick-cli " TARNWICK_VERSION));
        end(out, cli::Status::Done);
    }
    cli::Session session(line, out);
    const cli::Status status = session.run();
    if (line.json && status != cli::Status::WrongUsage)
        out.line();
    end(out, status);
}

} // namespace

int main(int argc, char *argv[])
{
    platform::preferUtf8Locale();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tarnwick"));
    const auto line = cli::parseCommandLine(argumentsOf(argc, argv));
    if (!line) {
        cli::Session::complain(line.error().message);
        return int(cli::Status::WrongUsage);
    }
    runCommandLine(*line);
}
