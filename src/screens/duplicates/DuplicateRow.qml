import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// One row of the list of groups: a group's head, one of its members, or its foot.
ListRow {
    id: row

    required property int index
    required property int kind
    required property string group
    required property int place
    required property string copies
    required property string reclaimable
    required property string first
    required property string second
    required property list<string> tags
    required property bool kept
    required path
    property real margin: 0
    property bool last: false

    signal keepPressed(string group, int place)
    signal resolvePressed(Item button, string group)
    signal notDuplicatePressed(Item button, string group)

    readonly property bool isHead: row.kind === 0
    readonly property bool isMember: row.kind === 1
    readonly property bool isFoot: row.kind === 2
    readonly property real gap: row.isFoot && !row.last ? 18 : 0

    implicitHeight: (row.isHead ? 50 : row.isMember ? 50 : 68) + row.gap
    Accessible.name: row.first

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height - row.gap
        first: row.isHead
        last: row.isFoot
        ruled: false

        DuplicateHead {
            anchors.fill: parent
            visible: row.isHead
            copies: row.copies
            reclaimable: row.reclaimable
        }

        DuplicateMember {
            anchors.fill: parent
            visible: row.isMember
            first: row.first
            second: row.second
            tags: row.tags
            kept: row.kept
            onKeepPressed: row.keepPressed(row.group, row.place)
        }

        DuplicateFoot {
            anchors.fill: parent
            visible: row.isFoot
            track: row.first
            onResolvePressed: button => row.resolvePressed(button, row.group)
            onNotDuplicatePressed: button => row.notDuplicatePressed(button, row.group)
        }
    }
}
