#pragma once

#include "app/app_state.h"

#include <QUrl>

namespace tarnwick {

/// What the content area shows: a view, and for a screen which one.
struct ViewKey
{
    enum class Kind { FirstRun, Scanning, Screen };

    Kind kind = Kind::FirstRun;
    Screen screen = Screen::LibraryScore; ///< counts for the kind Screen alone

    bool operator==(const ViewKey &other) const
    {
        return kind == other.kind && (kind != Kind::Screen || screen == other.screen);
    }
};

/// What the phase and the selection ask for.
ViewKey wantedView(const AppState &app);

/// The QML of a view.
QUrl sourceOf(const ViewKey &view);

/// The presenter of a view, as the view's property `presenter` takes it. Presenters live as long as
/// their view is on show, so what a screen holds of its own is forgotten when it is left.
QObject *makePresenter(const ViewKey &view, AppState &app, QObject *parent);

} // namespace tarnwick
