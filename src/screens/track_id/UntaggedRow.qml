import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A track without a genre and the button that gives it the one suggested; or the line that tells
/// how many more there are.
ListRow {
    id: row

    required property int index
    required property string key
    required property string first
    required property string second
    required property string confidence
    required property int tint
    required property string genre
    required property bool acts
    required property string more
    required path
    property real margin: 0
    property bool last: false
    property bool canWrite: false

    signal genrePressed(Item button, string key)

    readonly property bool isTrack: row.more.length === 0

    implicitHeight: row.isTrack ? 58 : 46
    Accessible.name: row.isTrack ? row.first : row.more

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height
        last: row.last
        ruled: row.index > 0 && row.isTrack

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            visible: !row.isTrack
            text: row.more
            color: Theme.inkSoft
            font: Theme.font(12.5)
            elide: Text.ElideRight
        }

        RowLayout {
            anchors.fill: parent
            visible: row.isTrack
            spacing: 12

            Icon {
                implicitWidth: 18
                symbol: "tag"
                size: 16
                color: Theme.neutral500
            }

            TrackLine {
                Layout.fillWidth: true
                first: row.first
                second: row.second
            }

            Item {
                Layout.preferredWidth: 38
                Layout.rightMargin: 6 // the button's ring reaches out of its column
                implicitHeight: figure.implicitHeight
                visible: row.acts

                Figure {
                    id: figure

                    anchors.right: parent.right
                    text: row.confidence
                    color: Theme.tint(row.tint)
                    font: Theme.font(11, Font.DemiBold)
                }
            }

            Item {
                Layout.preferredWidth: 160
                Layout.fillHeight: true

                PlainText {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: !row.acts
                    text: "no signal yet"
                    color: Theme.inkSoft
                    font: Theme.font(12.5)
                }

                PlainButton {
                    id: button

                    x: -button.leftPadding
                    width: parent.width + button.leftPadding + button.rightPadding
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.acts
                    enabled: row.canWrite
                    activeFocusOnTab: false
                    horizontalPadding: 10
                    verticalPadding: 8
                    text: row.genre
                    Accessible.description: row.first
                    contentItem: GenreLine {
                        genre: button.text
                        color: button.enabled ? Theme.accent700 : Theme.neutral400
                    }
                    onClicked: row.genrePressed(button, row.key)
                }
            }
        }
    }
}
