// Renders every view of the window to a picture, over the default library of HOME:
//
//   screenshots --out FOLDER [--size WxH] [--scale N] [--only SCREEN] [--states]
//
// Exits with 1 where anything warned while the views were drawn, or where there is no library.

#include "platform/runtime_folder.h"
#include "platform/terminal.h"
#include "screenshots/picture_taker.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

int warnings = 0;

void countWarnings(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    ++warnings;
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    if (type == QtFatalMsg)
        std::_Exit(1);
}

/// What must stand before the application object is made: no display, no graphics card, and the
/// same letters on every machine.
void settleSurroundings(int argc, char *argv[])
{
    platform::preferUtf8Locale();
    platform::preferRuntimeFolder();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    if (!qEnvironmentVariableIsSet("FONTCONFIG_FILE") && QFile::exists(QStringLiteral(FONTS_CONF)))
        qputenv("FONTCONFIG_FILE", FONTS_CONF);
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "--scale") == 0)
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
    }
}

std::optional<QSize> sizeFrom(const QString &text)
{
    const QStringList parts = text.split(u'x');
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    return parts.size() == 2 && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

int complain(const char *message)
{
    std::fprintf(stderr, "screenshots: %s\n", message);
    return 2;
}

} // namespace

int main(int argc, char *argv[])
{
    settleSurroundings(argc, argv);
    qInstallMessageHandler(countWarnings);
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({u"out"_s, u"Folder for the pictures."_s, u"folder"_s});
    parser.addOption({u"size"_s, u"Size of the window."_s, u"WxH"_s, u"1120x720"_s});
    parser.addOption({u"scale"_s, u"Pixels for each point."_s, u"N"_s, u"1"_s});
    parser.addOption(
        {u"only"_s, u"One view: a screen's raw value, firstRun or scanning."_s, u"screen"_s});
    parser.addOption({u"states"_s, u"Also what a screen looks like while it is at work."_s});
    parser.addHelpOption();
    parser.process(application);

    const auto size = sizeFrom(parser.value(u"size"_s));
    if (!parser.isSet(u"out"_s))
        return complain("--out FOLDER is missing");
    if (!size)
        return complain("--size takes a width and a height: 1440x900");
    PictureTaker taker(parser.value(u"out"_s), *size);
    const bool taken = taker.take(parser.value(u"only"_s), parser.isSet(u"states"_s));
    return taken && warnings == 0 ? 0 : 1;
}
