import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A change: of what kind, what it did, and whether it can be taken back.
ListRow {
    id: row

    required property int index
    required property string key
    required property string kind
    required property string detail
    required property string line
    required property bool undone
    required property bool acts
    property real margin: 0
    property bool last: false

    signal undoPressed(Item button, string key)

    /// Beside the snapshots of a small window there is no room for a line's whole length.
    readonly property bool narrow: row.width < 640

    implicitHeight: row.narrow ? 84 : 62
    Accessible.name: row.detail

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        first: row.index === 0
        last: row.last

        RowLayout {
            anchors.fill: parent
            spacing: 12

            Item {
                Layout.preferredWidth: 120
                implicitHeight: pill.implicitHeight

                Pill {
                    id: pill

                    text: row.kind
                    most: parent.width
                }
            }

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

                PlainText {
                    Layout.fillWidth: true
                    text: row.detail
                    wrapMode: Text.Wrap
                    maximumLineCount: row.narrow ? 2 : 1
                    elide: Text.ElideRight
                }

                PlainText {
                    Layout.fillWidth: true
                    text: row.line
                    color: Theme.inkFaint
                    font: Theme.font(11.5)
                    wrapMode: Text.Wrap
                    maximumLineCount: row.narrow ? 2 : 1
                    elide: Text.ElideRight
                }
            }

            PlainText {
                visible: row.undone
                text: "Undone"
                color: Theme.inkSoft
                font: Theme.font(12, Font.DemiBold)
            }

            GhostButton {
                id: undo

                visible: row.acts
                activeFocusOnTab: false
                title: "Undo"
                Accessible.description: row.detail
                onClicked: row.undoPressed(undo, row.key)
            }
        }
    }
}
