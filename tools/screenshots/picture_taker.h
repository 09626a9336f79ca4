#pragma once

#include "app/app_state.h"
#include "tarnwick/main_window.h"

#include <QSize>

namespace tarnwick {

/// Takes the window through its views and keeps a picture of each.
class PictureTaker
{
public:
    /// Makes the folder if it is not there.
    PictureTaker(const QString &folder, const QSize &size);

    /// One view by its name, or all of them for an empty name; with further pictures of the
    /// screens that are known to look otherwise at work. False, with a line on standard error, for
    /// what can't be taken.
    bool take(const QString &only, bool withStates);

private:
    bool wants(const QString &name) const { return m_only.isEmpty() || m_only == name; }
    bool takeScan();
    bool takeScreens();
    bool takeStates(Screen screen);
    void settle();
    void waitUntilIdle();
    bool keep(const QString &name);

    QString m_folder;
    QString m_only;
    bool m_withStates = false;
    AppState m_app;
    MainWindow m_window;
};

} // namespace tarnwick
