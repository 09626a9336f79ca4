#pragma once

#include "support/app_fixture.h"
#include "support/qml_fixture.h"
#include "tarnwick/main_window.h"

#include <QQuickWindow>

namespace tarnwick::testing {

/// The program as a user has it on screen, over a home folder of the test's own.
class WindowFixture : public AppFixture
{
public:
    /// Starts the program and waits for its first picture.
    void open(AppState::Environment environment = AppState::Environment::Ignored,
              const QSize &size = {1120, 720})
    {
        close();
        launch(environment);
        m_window = std::make_unique<MainWindow>(app());
        window()->resize(size);
        m_window->show();
        window()->requestActivate();
        if (!QTest::qWaitForWindowActive(window()))
            qFatal("the window does not come up");
    }
    /// Opens the window and scans the home library.
    void openAndScan()
    {
        open();
        app().rescan();
        waitUntilIdle();
        waitForView(QStringLiteral("LibraryScoreScreen"));
    }
    void close()
    {
        if (m_window)
            releaseImages(window());
        m_window.reset();
    }

    QQuickWindow *window() const { return m_window->window(); }
    WindowPresenter &presenter() { return m_window->presenter(); }
    QQuickItem *content() const { return window()->contentItem(); }

    /// Whether the content area comes to show a view, by its QML name.
    bool waitForView(const QString &name)
    {
        return QTest::qWaitFor(
            [&] { return presenter().view().fileName() == name + QStringLiteral(".qml"); });
    }
    QStringList texts() const { return textsOf(content()); }
    QQuickItem *button(const QString &name) const { return itemNamed(content(), name); }
    /// A choice of the list that is open.
    QQuickItem *choice(const QString &name) const
    {
        return itemNamed(content(), name, QAccessible::MenuItem);
    }
    QQuickItem *text(const QString &words) const
    {
        return itemNamed(content(), words, QAccessible::StaticText);
    }

    ~WindowFixture() { close(); }

private:
    std::unique_ptr<MainWindow> m_window;
};

} // namespace tarnwick::testing
