#include "app/app_state.h"
#include "platform/data_folder.h"
#include "platform/end_signals.h"
#include "platform/one_instance.h"
#include "platform/runtime_folder.h"
#include "platform/terminal.h"
#include "tarnwick/main_window.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdio>
#include <cstdlib>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

int complain(const char *message)
{
    std::fprintf(stderr, "%s\n", message);
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    platform::preferUtf8Locale();
    platform::preferRuntimeFolder();
    // What the program keeps for itself must have one writer.
    platform::OneInstance instance(platform::dataFolder());
    if (instance.role() == platform::OneInstance::Role::HandedOver)
        return 0;
    if (instance.role() == platform::OneInstance::Role::Unanswered)
        return complain("Tarnwick runs already, but doesn't answer.");

    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"Tarnwick"_s);
    QGuiApplication::setApplicationDisplayName(u"Tarnwick"_s);
    QGuiApplication::setApplicationVersion(u"" TARNWICK_VERSION ""_s);
    QGuiApplication::setDesktopFileName(u"tarnwick"_s);

    platform::onEndSignal([] { QGuiApplication::quit(); });
    AppState app(AppState::Environment::Read);
    MainWindow window(app);
    window.show();
    instance.answer([&window] { window.comeToFront(); });
    const int status = QGuiApplication::exec();
    // The window is gone. A scan or a capture that still runs ends with the process.
    window.window()->hide();
    instance.leave();
    std::_Exit(status);
}
