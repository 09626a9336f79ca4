import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A step of the run, and how it stands.
ColumnLayout {
    id: row

    required property int index
    required property string number
    required property string title
    required property string status
    required property string symbol
    required property int tint
    required property bool running

    spacing: 0
    Accessible.role: Accessible.ListItem
    Accessible.name: row.title
    Accessible.description: row.status

    Rule {
        Layout.fillWidth: true
        Layout.leftMargin: 8
        Layout.rightMargin: 8
        visible: row.index > 0
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.preferredHeight: 34
        Layout.leftMargin: 8
        Layout.rightMargin: 8
        spacing: 12

        Rectangle {
            implicitWidth: 22
            implicitHeight: 22
            radius: 11
            color: Theme.tint(row.tint)

            Figure {
                anchors.centerIn: parent
                visible: row.symbol.length === 0
                text: row.number
                color: Theme.ink
                font: Theme.font(11, Font.DemiBold)
            }

            Icon {
                id: mark

                anchors.centerIn: parent
                symbol: row.symbol
                size: 13
                color: Theme.onFill
                heavy: true

                RotationAnimation on rotation {
                    running: row.running
                    from: 0
                    to: 360
                    duration: 900
                    loops: Animation.Infinite
                    onStopped: mark.rotation = 0
                }
            }
        }

        PlainText {
            Layout.fillWidth: true
            text: row.title
            font: Theme.font(13.5, Font.DemiBold)
            elide: Text.ElideRight
        }

        PlainText {
            text: row.status
            color: Theme.inkSoft
            font: Theme.font(12.5)
        }
    }
}
