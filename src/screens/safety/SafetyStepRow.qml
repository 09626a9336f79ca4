import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A step to a first change, with a check mark once it is done.
ColumnLayout {
    id: row

    required property int index
    required property string title
    required property string detail
    required property bool done
    required property bool takesSnapshot
    required property string taken
    required property string takeTitle
    required property bool canTake

    signal takePressed

    spacing: 0
    Accessible.role: Accessible.CheckBox
    Accessible.name: row.title
    Accessible.checked: row.done
    Accessible.readOnly: true

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
            symbol: row.done ? "checkmark.circle.fill" : "circle"
            size: 18
            color: row.done ? Theme.good : Theme.neutral400
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            PlainText {
                Layout.fillWidth: true
                text: row.title
                font: Theme.font(13.5, Font.DemiBold)
                elide: Text.ElideRight
            }

            PlainText {
                Layout.fillWidth: true
                text: row.detail
                color: Theme.inkSoft
                font: Theme.font(12)
                wrapMode: Text.Wrap
            }
        }

        PlainText {
            visible: row.takesSnapshot && row.taken.length > 0
            text: row.taken
            color: Theme.inkSoft
            font: Theme.font(12.5)
        }

        GhostButton {
            visible: row.takesSnapshot
            enabled: row.canTake
            title: row.takeTitle
            symbol: "camera"
            onClicked: row.takePressed()
        }
    }
}
