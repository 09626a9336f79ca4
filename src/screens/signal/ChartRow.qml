import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A track of the chart: its rank, what it is, and how many play it.
ListRow {
    id: row

    required property int index
    required property string rank
    required property string line
    required property string lanes
    required property bool marked
    required property string djs
    required property string plays
    property real margin: 0
    property bool last: false

    implicitHeight: 60
    Accessible.name: row.line

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        first: row.index === 0
        last: row.last

        RowLayout {
            anchors.fill: parent
            spacing: 16

            Item {
                implicitWidth: Math.max(30, rank.implicitWidth)
                implicitHeight: rank.implicitHeight

                Figure {
                    id: rank

                    anchors.right: parent.right
                    text: row.rank
                    color: Theme.neutral500
                    font: Theme.display(16)
                }
            }

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

                PlainText {
                    Layout.fillWidth: true
                    text: row.line
                    font: Theme.font(13.5)
                    maximumLineCount: 1
                    elide: Text.ElideRight
                }

                PlainText {
                    Layout.fillWidth: true
                    visible: row.lanes.length > 0
                    text: row.lanes
                    color: Theme.inkFaint
                    font: Theme.font(11.5)
                    maximumLineCount: 1
                    elide: Text.ElideRight
                }
            }

            Rectangle {
                visible: row.marked
                implicitWidth: mark.implicitWidth + 18
                implicitHeight: mark.implicitHeight + 8
                radius: height / 2
                color: Theme.accent100

                PlainText {
                    id: mark

                    anchors.centerIn: parent
                    text: "Owned — not played"
                    color: Theme.accent700
                    font: Theme.font(11, Font.DemiBold)
                }
            }

            ColumnLayout {
                Layout.minimumWidth: 84
                spacing: 2

                Figure {
                    Layout.alignment: Qt.AlignRight
                    text: row.djs
                    font: Theme.font(13, Font.DemiBold)
                }

                Figure {
                    Layout.alignment: Qt.AlignRight
                    text: row.plays
                    color: Theme.inkSoft
                    font: Theme.font(11.5)
                }
            }
        }
    }
}
