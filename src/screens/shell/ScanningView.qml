import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// How far the scan has come.
Item {
    id: view

    required property ScanningPresenter presenter

    Column {
        anchors.centerIn: parent
        spacing: 14

        PlainText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: view.presenter.phase
            font: Theme.display(22)
            Accessible.role: Accessible.Heading
        }

        Figure {
            anchors.horizontalCenter: parent.horizontalCenter
            text: view.presenter.count
            color: Theme.inkSoft
            font: Theme.font(13.5)
        }

        Meter {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 420
            height: 8
            least: 8
            fraction: view.presenter.fraction
            tint: Theme.accent
            Accessible.role: Accessible.ProgressBar
            Accessible.name: view.presenter.phase
            Accessible.ignored: false
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 8
            spacing: 44

            CentredFigure {
                value: view.presenter.filesOnDisk
                label: "On disk"
            }

            CentredFigure {
                value: view.presenter.missing
                label: "Missing"
            }
        }
    }
}
