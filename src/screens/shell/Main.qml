import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// The one window of the program.
Window {
    id: window

    required property WindowPresenter presenter

    width: Math.min(1240, Screen.desktopAvailableWidth)
    height: Math.min(800, Screen.desktopAvailableHeight)
    minimumWidth: 1120
    minimumHeight: 720
    title: "Tarnwick"
    color: Theme.desk
    visible: true

    RootView {
        anchors.fill: parent
        presenter: window.presenter
    }
}
