import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A snapshot on the timeline, with the button that goes back to it.
ListRow {
    id: row

    required property int index
    required property string key
    required property string reason
    required property string line
    required property bool canRollBack
    property bool last: false

    signal rollBackPressed(string key)

    Accessible.name: row.reason

    Rectangle {
        id: dot

        x: 2
        y: 6
        width: 9
        height: 9
        radius: 4.5
        color: row.index === 0 ? Theme.accent : Theme.neutral400
    }

    Rule {
        x: 6
        y: 18
        height: row.height - 15
        visible: !row.last
    }

    RowLayout {
        x: 22
        width: row.width - 22
        spacing: 6

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            PlainText {
                Layout.fillWidth: true
                text: row.reason
                font: Theme.font(12.5, Font.DemiBold)
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }

            PlainText {
                Layout.fillWidth: true
                text: row.line
                color: Theme.inkSoft
                font: Theme.font(11)
                maximumLineCount: 1
                elide: Text.ElideRight
            }
        }

        TextButton {
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: -1
            activeFocusOnTab: false
            enabled: row.canRollBack
            opacity: row.canRollBack ? 1 : 0.5
            text: "Roll back"
            tint: Theme.accent700
            ringGap: -1
            Accessible.description: row.reason
            onClicked: row.rollBackPressed(row.key)
        }
    }
}
