// The window: how soon its first picture is there, how fast a screen opens on a large library, and
// whether the scanning view draws on while 100,000 tracks go by.

#include "ratio.h"
#include "support/library_on_disk.h"
#include "tarnwick/main_window.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QQuickWindow>
#include <QtPlugin>

#include <algorithm>
#include <cstdio>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int libraryTracks = 100'000;

bool waitFor(const std::function<bool()> &condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    return true;
}

void waitForPicture(QQuickWindow &window)
{
    bool drawn = false;
    const auto connection =
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&drawn] { drawn = true; });
    window.update();
    waitFor([&] { return drawn; });
    QObject::disconnect(connection);
}

/// Ends the process with the picture: what follows is no part of a start.
[[noreturn]] void showBareWindow()
{
    QQuickWindow window;
    window.resize(1120, 720);
    window.show();
    waitForPicture(window);
    std::_Exit(0);
}

[[noreturn]] void showMainWindow()
{
    AppState app(AppState::Environment::Ignored);
    MainWindow main(app);
    main.show();
    waitForPicture(*main.window());
    std::_Exit(0);
}

/// Starts this program anew, to end with its first picture.
void startProcess(const QString &window)
{
    if (QProcess::execute(QCoreApplication::applicationFilePath(), {window}) != 0)
        qFatal("the window did not come up");
}

/// The longest that each screen took from its selection to its picture, in milliseconds.
double slowestScreen(AppState &app, MainWindow &main)
{
    double slowest = 0;
    for (const ScreenInfo &info : allScreens()) {
        app.setSelection(Screen::Account);
        waitForPicture(*main.window());
        QElapsedTimer timer;
        timer.start();
        app.setSelection(info.screen);
        waitForPicture(*main.window());
        slowest = std::max(slowest, double(timer.nsecsElapsed()) / 1e6);
    }
    return slowest;
}

/// Scans, and gives the longest gap between two turns of the event loop that drew, in milliseconds.
double longestGapWhileScanning(AppState &app, MainWindow &main,
                               const SeratoLibrary::Location &location)
{
    QElapsedTimer sinceLast;
    double longest = 0;
    const auto connection =
        QObject::connect(main.window(), &QQuickWindow::frameSwapped, main.window(), [&] {
            longest = std::max(longest, double(sinceLast.nsecsElapsed()) / 1e6);
            sinceLast.start();
        });
    sinceLast.start();
    app.startScan(location);
    waitFor([&] {
        main.window()->update();
        return app.pendingTasks() == 0;
    });
    QObject::disconnect(connection);
    return longest;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    if (application.arguments().contains(u"--bare"_s))
        showBareWindow();
    if (application.arguments().contains(u"--main"_s))
        showMainWindow();
    const bench::LibraryOnDisk library(libraryTracks, 4'000);
    qputenv("XDG_DATA_HOME", library.seratoFolder().toUtf8());
    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "start to first picture", [] { startProcess(u"--bare"_s); },
        [] { startProcess(u"--main"_s); }, 4.0);

    AppState app(AppState::Environment::Ignored);
    MainWindow main(app);
    main.show();
    waitForPicture(*main.window());
    const SeratoLibrary::Location location{u"Bench"_s, QUrl::fromLocalFile(library.seratoFolder()),
                                           true, true};
    const double gap = longestGapWhileScanning(app, main, location);
    std::printf("longest gap between two pictures during a scan: %.1f ms (goal 50 + a frame)\n",
                gap);
    std::printf("slowest screen, selection to picture: %.1f ms (goal 60)\n",
                slowestScreen(app, main));
    std::fflush(stdout);
    std::_Exit(ratios.finish());
}
