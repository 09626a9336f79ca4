import QtQuick
import Tarnwick.Components

/// How far a track stands from the library's level: to the right of the line it is louder, to the
/// left softer. From six decibels on a bar fills its side.
Item {
    id: bar

    /// Decibels.
    required property real deviation

    readonly property real most: 6.0
    readonly property real half: bar.width * 0.5
    readonly property real share: Math.max(-1, Math.min(1, bar.deviation / bar.most))

    implicitHeight: 8

    Rectangle {
        x: bar.half - width / 2
        width: 1
        height: bar.height
        color: Theme.controlRule
    }

    Rectangle {
        x: bar.deviation >= 0 ? bar.half : bar.half - width
        width: bar.half * Math.abs(bar.share)
        height: bar.height
        radius: height / 2
        color: bar.deviation >= 0 ? Theme.accent2 : Theme.neutral500
    }
}
