import QtQuick
import Tarnwick.Components

/// A capsule filled from the left.
Rectangle {
    id: meter

    /// 0 to 1.
    required property real fraction
    property color tint: Theme.ink
    property real least: 0

    implicitHeight: 7
    radius: height / 2
    color: Theme.neutral200
    Accessible.ignored: true

    Rectangle {
        width: Math.max(meter.least, meter.width * Math.min(1, Math.max(0, meter.fraction)))
        height: meter.height
        radius: meter.radius
        color: meter.tint
        visible: width > 0
    }
}
