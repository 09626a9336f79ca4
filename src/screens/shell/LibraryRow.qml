import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A library found, with the button that scans it or the reason why it can't be.
Card {
    id: row

    required property string volume
    required property string folder
    required property bool online
    required property bool canScan

    signal scanPressed

    padding: 14

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        Icon {
            implicitWidth: 26
            implicitHeight: 26
            symbol: row.online ? "internaldrive.fill" : "internaldrive"
            size: 22
            color: row.online ? Theme.ink : Theme.neutral400
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            PlainText {
                Layout.fillWidth: true
                text: row.volume
                font: Theme.font(13.5, Font.DemiBold)
                elide: Text.ElideRight
            }

            PlainText {
                Layout.fillWidth: true
                text: row.folder
                color: Theme.inkFaint
                font: Theme.font(11.5)
                elide: Text.ElideMiddle
            }
        }

        PrimaryButton {
            visible: row.canScan
            title: "Scan"
            symbol: "magnifyingglass"
            Accessible.description: row.volume
            onClicked: row.scanPressed()
        }

        PlainText {
            visible: !row.canScan
            text: row.online ? "No database" : "Offline"
            color: row.online ? Theme.warn : Theme.neutral500
            font: Theme.font(12.5, Font.DemiBold)
        }
    }
}
