import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A library, how it stands, and the button that scans it.
ColumnLayout {
    id: row

    required property int index
    required property string volume
    required property string folder
    required property string symbol
    required property string status
    required property int tint
    required property bool loaded
    required property bool canScan

    signal scanPressed

    readonly property color colour: Theme.tint(row.tint)

    spacing: 0

    Rule {
        Layout.fillWidth: true
        visible: row.index > 0
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 10
        Layout.bottomMargin: 10
        spacing: 12

        Icon {
            symbol: row.symbol
            size: 20
            color: row.colour
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
                color: Theme.inkSoft
                font: Theme.font(11.5)
                elide: Text.ElideMiddle
            }

            PlainText {
                Layout.fillWidth: true
                text: row.status
                // Too pale for words.
                color: row.tint === Tint.Neutral ? Theme.inkSoft : row.colour
                font: Theme.font(12)
                elide: Text.ElideRight
            }
        }

        PlainText {
            visible: row.loaded
            text: "Loaded"
            color: Theme.good
            font: Theme.font(12.5, Font.DemiBold)
        }

        GhostButton {
            visible: row.canScan
            title: "Scan this"
            symbol: "magnifyingglass"
            Accessible.description: row.volume
            onClicked: row.scanPressed()
        }
    }
}
