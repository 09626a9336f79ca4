#include "tarnwick/main_window.h"

#include "foundation/screen.h"
#include "screens/components/install.h"

#include <QQuickWindow>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(Tarnwick_ComponentsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_ScreensPlugin)

namespace tarnwick {

namespace {

/// In which an event comes back from the display server.
constexpr std::chrono::milliseconds timeOfAnEvent(50);

QStringList symbolsOfScreens()
{
    QStringList symbols;
    for (const ScreenInfo &screen : allScreens())
        symbols.append(screen.symbol);
    return symbols;
}

} // namespace

MainWindow::MainWindow(AppState &app)
    : m_presenter(app)
{
    // The desktop's own rendering of letters, with and without a graphics card.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    installComponents(m_engine, symbolsOfScreens());
    m_engine.setInitialProperties({{u"presenter"_s, QVariant::fromValue(&m_presenter)}});
    m_engine.load(QUrl(u"qrc:/qt/qml/Tarnwick/Screens/Main.qml"_s));
    if (m_engine.rootObjects().isEmpty())
        qFatal("the window can't be loaded");
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().first());
    m_fileDialog.emplace(m_engine, m_window);
}

void MainWindow::show()
{
    QObject::connect(m_window, &QQuickWindow::frameSwapped, &m_presenter,
                     &WindowPresenter::contentAppeared,
                     Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_window->show();
}

void MainWindow::comeToFront()
{
    m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->raise();
    m_window->requestActivate();
    // X11 believes only who asks with a time as late as the user's last act, and the time that Qt
    // knows is that of this window's last event. To touch the size hints, which this does without
    // any effect on the size, brings one. Elsewhere the second asking changes nothing.
    m_window->setBaseSize(m_window->baseSize() + QSize(1, 1));
    QTimer::singleShot(timeOfAnEvent, m_window, [this] { m_window->requestActivate(); });
}

} // namespace tarnwick
