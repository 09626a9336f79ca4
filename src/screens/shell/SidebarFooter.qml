import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// How large the library is, whose it is, and the button that scans it again.
ColumnLayout {
    id: footer

    required property SidebarPresenter presenter

    spacing: 14

    RowLayout {
        Layout.fillWidth: true
        visible: footer.presenter.hasTotals
        spacing: 8

        SmallFigure {
            value: footer.presenter.tracks
            label: "Tracks"
        }

        Item {
            Layout.fillWidth: true
        }

        SmallFigure {
            value: footer.presenter.onDisk
            label: "On disk"
        }

        Item {
            Layout.fillWidth: true
        }

        SmallFigure {
            value: footer.presenter.reclaim
            label: "Reclaim"
        }
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        Rectangle {
            implicitWidth: 30
            implicitHeight: 30
            radius: 15
            color: Theme.neutral300

            Icon {
                anchors.centerIn: parent
                symbol: "person.fill"
                size: 16
                color: Theme.neutral700
            }
        }

        Column {
            Layout.fillWidth: true
            spacing: 1

            PlainText {
                text: "softhollow9"
                font: Theme.font(12.5, Font.DemiBold)
            }

            PlainText {
                text: "Solo · free"
                color: Theme.neutral700
                font: Theme.font(11)
            }
        }
    }

    GhostButton {
        id: rescan

        Layout.fillWidth: true
        title: "Rescan"
        symbol: "arrow.clockwise"
        onClicked: footer.presenter.rescan()

        Tip {
            text: "Scan the library again (F5)"
            over: rescan.hovered ? rescan : null
        }
    }
}
