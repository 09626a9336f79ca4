import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// An issue: what it is about, what would be done, and the button that does it or leads to where
/// the user decides.
ListRow {
    id: row

    required property int index
    required property string key
    required property string type
    required property string track
    required property string line
    required property bool safe
    required property bool fixable
    required path
    property real margin: 0
    property bool last: false

    signal fixPressed(Item button, string key)
    signal decidePressed(string key)

    implicitHeight: 62
    Accessible.name: row.track

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        first: row.index === 0
        last: row.last

        RowLayout {
            anchors.fill: parent
            spacing: 14

            Rectangle {
                Layout.preferredWidth: 92
                implicitHeight: label.implicitHeight + 8
                radius: 6
                color: Theme.neutral200

                PlainText {
                    id: label

                    anchors.centerIn: parent
                    text: row.type
                    color: Theme.inkSoft
                    font: Theme.font(11, Font.DemiBold)
                }
            }

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

                PlainText {
                    Layout.fillWidth: true
                    text: row.track
                    font: Theme.font(13.5)
                    maximumLineCount: 1
                    elide: Text.ElideRight
                }

                PlainText {
                    Layout.fillWidth: true
                    text: row.line
                    color: Theme.inkSoft
                    font: Theme.font(12)
                    maximumLineCount: 1
                    elide: Text.ElideRight
                }
            }

            Item {
                implicitWidth: 62
                implicitHeight: badge.implicitHeight

                RiskBadge {
                    id: badge

                    anchors.right: parent.right
                    safe: row.safe
                }
            }

            PrimaryButton {
                id: fix

                Layout.minimumWidth: 76
                visible: row.fixable
                activeFocusOnTab: false
                title: "Fix it"
                Accessible.description: row.track
                onClicked: row.fixPressed(fix, row.key)
            }

            GhostButton {
                Layout.minimumWidth: 76
                visible: !row.fixable
                activeFocusOnTab: false
                title: "Decide"
                Accessible.description: row.track
                onClicked: row.decidePressed(row.key)
            }
        }
    }
}
