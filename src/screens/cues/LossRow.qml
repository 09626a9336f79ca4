import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A track that has lost something, and the button that puts it back.
ListRow {
    id: row

    required property int index
    required property string key
    required property string first
    required property string second
    required property string line
    required path
    property real margin: 0
    property bool last: false

    signal restorePressed(Item button, string key)

    implicitHeight: 78
    Accessible.name: row.first

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        first: row.index === 0
        last: row.last

        RowLayout {
            anchors.fill: parent
            spacing: 12

            Icon {
                symbol: "waveform.path.ecg"
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
                    text: row.line
                    color: Theme.inkSoft
                    font: Theme.font(11.5)
                    maximumLineCount: 1
                    elide: Text.ElideRight
                }
            }

            PrimaryButton {
                id: restore

                activeFocusOnTab: false
                title: "Restore"
                Accessible.description: row.first
                onClicked: row.restorePressed(restore, row.key)
            }
        }
    }
}
