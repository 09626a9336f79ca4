import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A step with its place, and the arrow that leads to its screen.
ColumnLayout {
    id: row

    required property int index
    required property string title
    required property string detail

    signal goPressed

    spacing: 0

    Rule {
        Layout.fillWidth: true
        visible: row.index > 0
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 9
        Layout.bottomMargin: 9
        spacing: 14

        Rectangle {
            implicitWidth: 22
            implicitHeight: 22
            radius: 11
            color: Theme.accent100

            Figure {
                anchors.centerIn: parent
                text: row.index + 1
                color: Theme.accent700
                font: Theme.font(11, Font.DemiBold)
            }
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

        PlainButton {
            padding: 9
            hint: "Go to where this is done"
            contentItem: Icon {
                symbol: "arrow.right"
                size: 14
                color: Theme.accent700
                heavy: true
            }
            Accessible.name: row.title
            onClicked: row.goPressed()
        }
    }
}
