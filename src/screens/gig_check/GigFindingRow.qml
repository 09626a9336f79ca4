import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A finding: how many tracks have it, what it is, and the way to where it is mended.
ColumnLayout {
    id: row

    required property int index
    required property string count
    required property string title
    required property color tint

    signal fixPressed

    spacing: 0
    Accessible.role: Accessible.ListItem
    Accessible.name: row.title

    Rule {
        Layout.fillWidth: true
        visible: row.index > 0
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 7
        Layout.bottomMargin: 7
        spacing: 14

        Figure {
            Layout.minimumWidth: 56
            text: row.count
            color: row.tint
            font: Theme.display(17)
        }

        PlainText {
            Layout.fillWidth: true
            text: row.title
            font: Theme.font(13.5)
            elide: Text.ElideRight
        }

        GhostButton {
            title: "Fix"
            Accessible.description: row.title
            onClicked: row.fixPressed()
        }
    }
}
