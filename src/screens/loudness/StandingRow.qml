import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A track, how far it stands from the library's level, and the button that levels it.
ListRow {
    id: row

    required property int index
    required property string key
    required property string first
    required property string second
    required property real deviation
    required property string deviationText
    required property int tint
    required property string levelTitle
    required property bool acts
    required path
    property real margin: 0
    property bool last: false
    property bool canWrite: false

    signal levelPressed(Item button, string key)

    implicitHeight: 58
    Accessible.name: row.first

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        last: row.last
        ruled: row.index > 0

        RowLayout {
            anchors.fill: parent
            spacing: 14

            TrackLine {
                Layout.preferredWidth: 300
                first: row.first
                second: row.second
            }

            DeviationBar {
                Layout.fillWidth: true
                deviation: row.deviation
            }

            Item {
                Layout.preferredWidth: 64
                implicitHeight: figure.implicitHeight

                Figure {
                    id: figure

                    anchors.right: parent.right
                    text: row.deviationText
                    color: Theme.tint(row.tint)
                    font: Theme.font(12.5, Font.DemiBold)
                }
            }

            Item {
                Layout.preferredWidth: 84
                Layout.fillHeight: true

                PlainText {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    visible: !row.acts
                    text: "tagged"
                    color: Theme.good
                    font: Theme.font(12.5, Font.DemiBold)
                }

                TextButton {
                    id: level

                    anchors.right: parent.right
                    anchors.rightMargin: -level.rightPadding
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.acts
                    enabled: row.canWrite
                    activeFocusOnTab: false
                    horizontalPadding: 8
                    text: row.levelTitle
                    tint: Theme.accent700
                    Accessible.description: row.first
                    onClicked: row.levelPressed(level, row.key)
                }
            }
        }
    }
}
