#include "app/app_state.h"
#include "platform/runtime_folder.h"
#include "platform/terminal.h"
#include "tarnwick/main_window.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdlib>

using namespace tarnwick;
using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    platform::preferUtf8Locale();
    platform::preferRuntimeFolder();
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"Tarnwick"_s);
    QGuiApplication::setApplicationDisplayName(u"Tarnwick"_s);
    QGuiApplication::setApplicationVersion(u"" TARNWICK_VERSION ""_s);
    QGuiApplication::setDesktopFileName(u"tarnwick"_s);

    AppState app(AppState::Environment::Read);
    MainWindow window(app);
    window.show();
    const int status = QGuiApplication::exec();
    // The window is gone. A scan or a capture that still runs ends with the process.
    window.window()->hide();
    std::_Exit(status);
}
