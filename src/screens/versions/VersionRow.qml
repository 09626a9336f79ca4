import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// One row of the list of songs: a song's head, one of its cuts, or its foot.
ListRow {
    id: row

    required property int index
    required property int kind
    required property string group
    required property int place
    required property string base
    required property string count
    required property string cut
    required property string first
    required property string second
    required property string plays
    required property int playsTint
    required property bool kept
    required path
    property real margin: 0
    property bool last: false

    signal choosePressed(string group, int place)
    signal archivePressed(Item button, string group)

    readonly property bool isHead: row.kind === 0
    readonly property bool isMember: row.kind === 1
    readonly property bool isFoot: row.kind === 2
    readonly property real gap: row.isFoot && !row.last ? 18 : 0

    implicitHeight: (row.isHead ? 50 : row.isMember ? 50 : 68) + row.gap
    Accessible.name: row.isMember ? row.first : row.base

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height - row.gap
        first: row.isHead
        last: row.isFoot
        ruled: false

        VersionHead {
            anchors.fill: parent
            visible: row.isHead
            base: row.base
            count: row.count
        }

        VersionMember {
            anchors.fill: parent
            anchors.leftMargin: -10
            anchors.rightMargin: -10
            anchors.topMargin: 3
            anchors.bottomMargin: 2
            visible: row.isMember
            cut: row.cut
            first: row.first
            second: row.second
            plays: row.plays
            playsTint: Theme.tint(row.playsTint)
            kept: row.kept
            onClicked: row.choosePressed(row.group, row.place)
        }

        PrimaryButton {
            id: archive

            anchors.verticalCenter: parent.verticalCenter
            activeFocusOnTab: false
            visible: row.isFoot
            title: "Keep this cut, archive the rest"
            symbol: "archivebox"
            Accessible.description: row.base
            onClicked: row.archivePressed(archive, row.group)
        }
    }
}
