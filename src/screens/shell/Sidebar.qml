import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Where the user can go, and how the library stands.
Item {
    id: sidebar

    required property SidebarPresenter presenter

    readonly property int inset: 16

    width: 238

    /// Round at the left as the window is, straight at the right.
    Rectangle {
        anchors.fill: parent
        radius: Theme.radius.window
        color: Theme.sidebar
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.radius.window
        color: Theme.sidebar
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        SidebarHeader {
            Layout.fillWidth: true
            Layout.margins: sidebar.inset
        }

        Rule {
            Layout.fillWidth: true
        }

        SidebarRows {
            Layout.fillWidth: true
            Layout.fillHeight: true
            presenter: sidebar.presenter
        }

        Rule {
            Layout.fillWidth: true
        }

        SidebarFooter {
            Layout.fillWidth: true
            Layout.margins: sidebar.inset
            presenter: sidebar.presenter
        }
    }
}
