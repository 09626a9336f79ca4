import QtQuick
import Tarnwick.Components

/// A pill that can be pressed: one choice of several, filled while it is the chosen one.
PlainButton {
    id: button

    property bool active: false

    corner: Theme.radius.pill
    Accessible.selectable: true
    Accessible.selected: button.active
    contentItem: Pill {
        text: button.text
        active: button.active
        quiet: true
    }
}
