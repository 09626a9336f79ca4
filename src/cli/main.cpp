#include "cli/command_line.h"
#include "cli/output.h"
#include "cli/session.h"
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

int runCommandLine(const cli::CommandLine &line)
{
    cli::Output out(stdout);
    if (line.help) {
        out.text(line.command ? cli::commandHelp(*line.command) : cli::programHelp());
        return 0;
    }
    if (line.version) {
        out.line(QStringLiteral("tarnwick-cli " TARNWICK_VERSION));
        return 0;
    }
    cli::Session session(line, out);
    const cli::Status status = session.run();
    if (line.json && status != cli::Status::WrongUsage)
        out.line();
    return int(status);
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
    const int status = runCommandLine(*line);
    // Nothing is left to do: don't spend time on tearing down a large library.
    std::fflush(nullptr);
    std::_Exit(status);
}
