import QtQuick
import Tarnwick.Components

/// Shows which control has the keyboard: a line around its parent.
Rectangle {
    property real corner: Theme.radius.control
    /// How far outside the control the ring lies; negative inside.
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -gap
    radius: Math.min(corner + gap, height / 2)
    color: "transparent"
    border.width: 2
    border.color: Theme.focusRing
}
