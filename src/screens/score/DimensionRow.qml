import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// One dimension: what it is about, how it stands, its score as a bar and as a number.
ColumnLayout {
    id: row

    required property int index
    required property string name
    required property string detail
    required property int score
    required property int tint

    readonly property color colour: Theme.tint(row.tint)

    spacing: 0

    Rule {
        Layout.fillWidth: true
        visible: row.index > 0
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 8
        Layout.bottomMargin: 8
        spacing: 16

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            PlainText {
                Layout.fillWidth: true
                text: row.name
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

        Meter {
            implicitWidth: 120
            fraction: row.score / 100
            tint: row.colour
        }

        Item {
            implicitWidth: 30
            implicitHeight: number.implicitHeight

            Figure {
                id: number

                anchors.right: parent.right
                text: row.score
                color: row.colour
                font: Theme.font(14, Font.DemiBold)
            }
        }
    }
}
