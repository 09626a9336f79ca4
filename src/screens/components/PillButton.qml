import QtQuick
import Tarnwick.Components

/// A pill that can be pressed: one choice of several, filled while it is the chosen one.
PlainButton {
    id: button

    property bool active: false
    property string symbol
    property bool symbolLast: false
    property real most: Infinity
    /// Whether it is one choice of several.
    property bool isChoice: true

    corner: Theme.radius.pill
    Accessible.selectable: button.isChoice
    Accessible.selected: button.isChoice && button.active
    contentItem: Pill {
        text: button.text
        active: button.active
        symbol: button.symbol
        symbolLast: button.symbolLast
        most: button.most
        quiet: true
    }
}
