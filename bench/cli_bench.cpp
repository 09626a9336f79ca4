// The command line: how soon it answers, and what its largest output costs beyond the scan.

#include "cli/output.h"
#include "cli/track_json.h"
#include "floors/track_texts.h"
#include "ratio.h"
#include "support/generated_library.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

using namespace tarnwick;

namespace {

/// Runs a program of the build to its end, its output thrown away.
void run(const QString &program, const char *argument)
{
    const QByteArray path = (QCoreApplication::applicationDirPath() + program).toUtf8();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    char *arguments[] = {const_cast<char *>(path.constData()), const_cast<char *>(argument),
                         nullptr};
    pid_t child = 0;
    int status = -1;
    if (posix_spawn(&child, path.constData(), &actions, nullptr, arguments, environ) != 0 ||
        ::waitpid(child, &status, 0) != child || status != 0)
        qFatal("%s did not run", path.constData());
    posix_spawn_file_actions_destroy(&actions);
}

void writeTracks(const std::vector<ScannedTrack> &tracks, std::FILE *stream)
{
    cli::Output out(stream);
    out.json().beginArray();
    for (const ScannedTrack &track : tracks) {
        cli::writeTrack(out.json(), track);
        out.passOn();
    }
    out.json().endArray();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "start of the command line", [] { run(QStringLiteral("/bare_core"), "--version"); },
        [] { run(QStringLiteral("/../bin/tarnwick-cli"), "--version"); }, 2.0);

    const auto library = bench::generatedLibrary(100'000);
    std::FILE *nowhere = std::fopen("/dev/null", "w");
    ratios.compare(
        "scan as JSON, output alone", [&] { bench::writeTexts(library->tracks, nowhere); },
        [&] { writeTracks(library->tracks, nowhere); }, 3.0);
    return ratios.finish();
}
