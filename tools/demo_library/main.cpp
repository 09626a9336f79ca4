#include "demo_options.h"
#include "expectations.h"
#include "library_files.h"
#include "library_plan.h"

#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace tarnwick::demo;

namespace {

enum Status { Done = 0, Failed = 1, WrongUsage = 2 };

void print(std::FILE *stream, const QString &text)
{
    std::fputs(qPrintable(text), stream);
}

int fail(Status status, const QString &message)
{
    print(stderr, u"demo_library: "_s + message + u'\n');
    return status;
}

int run(const Options &options)
{
    LibraryPlan plan = planLibrary(options.wish);
    if (const auto written = writeLibrary(plan, options.wish, options.existing); !written) {
        return fail(Failed, written.error());
    }
    if (!options.expectFile.isEmpty()) {
        const auto written = writeFile(options.expectFile, expectationsJson(plan));
        if (!written) {
            return fail(Failed, written.error());
        }
    }
    print(stdout, u"%1 tracks, %2 crates, %3 sessions in %4\n"_s.arg(plan.tracks.size())
                      .arg(plan.crates.size())
                      .arg(plan.sessions.size())
                      .arg(options.wish.home));
    return Done;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QFile::decodeName(argv[i]));
    }
    const auto options = parseOptions(arguments);
    if (!options) {
        return fail(WrongUsage, options.error() + u"; --help tells more"_s);
    }
    if (options->help) {
        print(stdout, helpText());
        return Done;
    }
    return run(*options);
}
