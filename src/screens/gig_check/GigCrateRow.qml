import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A crate with its box: whether it comes along.
ListRow {
    id: row

    required property string name
    required property string tracks
    required property bool picked

    signal togglePressed(string name)

    Accessible.name: row.name

    CheckButton {
        anchors.fill: parent
        activeFocusOnTab: false
        text: row.name
        leftPadding: 8
        rightPadding: 8
        ringGap: -1
        on: row.picked
        Accessible.description: row.tracks
        onClicked: row.togglePressed(row.name)
        contentItem: RowLayout {
            spacing: 10

            Icon {
                symbol: row.picked ? "checkmark.square.fill" : "square"
                size: 17
                color: row.picked ? Theme.accent : Theme.neutral400
            }

            PlainText {
                Layout.fillWidth: true
                text: row.name
                maximumLineCount: 1
                elide: Text.ElideRight
                Accessible.ignored: true
            }

            Figure {
                text: row.tracks
                color: Theme.inkFaint
                font: Theme.font(12)
            }
        }
    }
}
