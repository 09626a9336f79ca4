import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// The window's content: a sheet of paper on the desk, with the sidebar at its left, the view of the
/// moment at its right, and the toast bar over both.
Rectangle {
    id: root

    required property WindowPresenter presenter

    readonly property int leastWidth: 1120
    readonly property int leastHeight: 720
    /// The desk shows around the sheet as soon as there is room for it.
    readonly property int margin: Math.max(0, Math.min(14, (root.width - root.leastWidth) / 2, (root.height - root.leastHeight) / 2))

    color: Theme.desk

    Shortcuts {
        presenter: root.presenter
    }

    Rectangle {
        id: panel

        anchors.fill: parent
        anchors.margins: root.margin
        radius: Theme.radius.window
        color: Theme.ground

        SoftShadow {
            visible: root.margin > 0
            color: Theme.windowShadow2.color
            blur: Theme.windowShadow2.radius
            offset: Theme.windowShadow2.y
            corner: panel.radius
        }

        SoftShadow {
            visible: root.margin > 0
            color: Theme.windowShadow1.color
            blur: Theme.windowShadow1.radius
            offset: Theme.windowShadow1.y
            corner: panel.radius
        }

        Sidebar {
            id: sidebar

            height: parent.height
            presenter: root.presenter.sidebar
        }

        Rule {
            id: divider

            anchors.left: sidebar.right
            width: 1
            height: parent.height
        }

        Loader {
            id: content

            function show() {
                content.setSource(root.presenter.view, {
                    "presenter": root.presenter.viewPresenter
                });
            }

            anchors.left: divider.right
            anchors.right: parent.right
            height: parent.height
            Component.onCompleted: content.show()

            Connections {
                target: root.presenter

                function onViewChanged() {
                    content.show();
                }
            }
        }

        Rectangle {
            anchors.fill: parent
            radius: panel.radius
            color: "transparent"
            border.color: Theme.sectionRule
        }

        TextTools {
            anchors.fill: parent
        }

        /// Made for the first message: the first picture does without.
        Loader {
            id: toast

            readonly property bool wanted: root.presenter.toast.shown

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 18
            active: false
            Component.onCompleted: toast.active = toast.wanted
            onWantedChanged: toast.active = true

            sourceComponent: ToastBar {
                widest: panel.width - 36 // qmllint disable unqualified
                presenter: root.presenter.toast // qmllint disable unqualified
            }
        }
    }
}
