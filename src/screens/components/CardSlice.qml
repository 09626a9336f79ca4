import QtQuick
import Tarnwick.Components

/// A piece of a card that is made of the rows of a list: with the upper corners in its first piece,
/// the lower ones in its last, and a rule between two pieces.
Item {
    id: slice

    property bool first: false
    property bool last: false
    property bool ruled: true
    property real padding: 18
    default property alias content: inner.data

    readonly property real above: slice.first ? 0 : Theme.radius.card
    readonly property real below: slice.last ? 0 : Theme.radius.card

    clip: true

    Rectangle {
        y: -slice.above
        width: slice.width
        height: slice.height + slice.above + slice.below
        color: Theme.card
        radius: Theme.radius.card
        border.color: Theme.sectionRule
    }

    Rule {
        x: slice.padding
        width: slice.width - 2 * slice.padding
        visible: slice.ruled && !slice.first
        color: Theme.rowRule
    }

    Item {
        id: inner

        x: slice.padding
        width: slice.width - 2 * slice.padding
        height: slice.height
    }
}
