import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// A missing track with what can be done about it, and below it, while it is open, the places where
/// its file might be.
ListRow {
    id: row

    required property int index
    required property string key
    required property string first
    required property string second
    required property string lastSeen
    required property bool expanded
    required path
    property real margin: 0
    property bool last: false
    property string panelText
    property CandidateModel candidates: null

    signal togglePressed(string key)
    signal browsePressed(string key)
    signal dropPressed(Item button, string key)
    signal relinkPressed(Item button, string key, int candidate)

    implicitHeight: 78 + (panel.active ? panel.implicitHeight + 14 : 0)
    Accessible.name: row.first

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        first: row.index === 0
        last: row.last

        RowLayout {
            width: parent.width
            height: 78
            spacing: 12

            Icon {
                symbol: "questionmark.folder"
                size: 20
                color: Theme.accent
            }

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

                TrackLine {
                    Layout.fillWidth: true
                    first: row.first
                    second: row.second
                }

                PlainText {
                    Layout.fillWidth: true
                    text: row.lastSeen
                    color: Theme.inkSoft
                    font: Theme.font(11)
                    maximumLineCount: 1
                    elide: Text.ElideMiddle
                }
            }

            GhostButton {
                activeFocusOnTab: false
                title: row.expanded ? "Hide" : "Find it"
                symbol: "magnifyingglass"
                Accessible.description: row.first
                onClicked: row.togglePressed(row.key)
            }

            GhostButton {
                activeFocusOnTab: false
                title: "Browse…"
                symbol: "folder"
                Accessible.description: row.first
                onClicked: row.browsePressed(row.key)
            }

            TextButton {
                id: drop

                activeFocusOnTab: false
                text: "Drop"
                tint: Theme.accent700
                Accessible.description: row.first
                onClicked: row.dropPressed(drop, row.key)
            }
        }

        Loader {
            id: panel

            y: 78
            width: parent.width
            active: row.expanded
            sourceComponent: CandidatePanel {
                text: row.panelText // qmllint disable unqualified
                candidates: row.candidates // qmllint disable unqualified
                onRelinkPressed: (button, candidate) => row.relinkPressed(button, row.key, candidate)
            }
        }
    }
}
