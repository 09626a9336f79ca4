#pragma once

#include "screens/shell/file_dialog.h"
#include "screens/shell/window_presenter.h"

#include <QQmlApplicationEngine>

class QQuickWindow;

namespace tarnwick {

/// The window over an AppState, which must outlive it. Loads everything in its constructor and
/// shows nothing yet.
class MainWindow
{
public:
    explicit MainWindow(AppState &app);

    WindowPresenter &presenter() { return m_presenter; }
    QQuickWindow *window() const { return m_window; }

    /// Shows the window. Once its first picture is there, libraries and Serato are looked for
    /// again.
    void show();
    /// Ahead of all other windows, also where it was minimized.
    void comeToFront();

private:
    WindowPresenter m_presenter;
    QQmlApplicationEngine m_engine; ///< ahead of the presenter in going: views read the presenter
    QQuickWindow *m_window = nullptr;
    std::optional<FileDialog> m_fileDialog;
};

} // namespace tarnwick
