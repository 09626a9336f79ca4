import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// One row of what could be tidied: a heading, a line that there is nothing to do, or something to
/// do with its button.
ListRow {
    id: row

    required property int index
    required property string key
    required property string heading
    required property string praise
    required property string lead
    required property string symbol
    required property int tint
    required property string title
    required property string detail
    required property string action
    required property string actionSymbol
    required property bool opens
    required property bool closes
    required property bool ruled
    property real margin: 0
    property bool last: false

    signal actPressed(Item button, string key)

    readonly property real gap: row.closes && !row.last ? 18 : 0
    readonly property bool isHeading: row.heading.length > 0
    readonly property bool isPraise: row.praise.length > 0
    readonly property bool isAlone: row.opens && row.closes
    /// What the last row of a card has below it, as the heading has above it.
    readonly property real below: row.closes && !row.isAlone && !row.isPraise ? 5 : 0

    implicitHeight: (row.isHeading ? 42 : row.isPraise ? 40 : row.isAlone ? 78 : 62) + row.below + row.gap
    Accessible.name: row.heading + row.praise + row.title

    CardSlice {
        x: row.margin
        width: row.width - 2 * row.margin
        height: row.height - row.gap
        first: row.opens
        last: row.closes
        ruled: row.ruled

        SectionHead {
            y: 16
            width: parent.width
            visible: row.isHeading
            title: row.heading
        }

        PlainText {
            y: 3
            width: parent.width
            visible: row.isPraise
            text: row.praise
            color: Theme.good
        }

        HygieneLine {
            anchors.fill: parent
            anchors.bottomMargin: row.below
            visible: !row.isHeading && !row.isPraise
            lead: row.lead
            symbol: row.symbol
            tint: Theme.tint(row.tint)
            title: row.title
            detail: row.detail
            action: row.action
            actionSymbol: row.actionSymbol
            onActPressed: button => row.actPressed(button, row.key)
        }
    }
}
