import QtQuick
import Tarnwick.Components

/// Shows which control has the keyboard: a line around its parent.
Rectangle {
    id: ring

    property real corner: Theme.radius.control
    /// How far outside the control the ring reaches; negative inside.
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -ring.gap
    radius: Math.min(ring.corner + ring.gap, ring.height / 2)
    color: "transparent"
    border.width: 2
    border.color: Theme.focusRing
}
