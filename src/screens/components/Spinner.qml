import QtQuick
import Tarnwick.Components

/// Tells that something is under way: dots in a ring that light up one after the other.
Item {
    id: spinner

    property int size: 16
    property color color: Theme.inkSoft

    readonly property int dots: 8
    property int lit: 0

    implicitWidth: spinner.size
    implicitHeight: spinner.size
    Accessible.ignored: true

    Repeater {
        model: spinner.dots

        Rectangle {
            required property int index

            readonly property real angle: index / spinner.dots * 2 * Math.PI // qmllint disable unqualified
            readonly property int behind: (spinner.lit - index + spinner.dots) % spinner.dots // qmllint disable unqualified

            x: (spinner.size - width) / 2 + Math.sin(angle) * (spinner.size - width) / 2 // qmllint disable unqualified
            y: (spinner.size - width) / 2 - Math.cos(angle) * (spinner.size - width) / 2 // qmllint disable unqualified
            width: 3
            height: 3
            radius: 1.5
            antialiasing: true
            color: spinner.color // qmllint disable unqualified
            opacity: 1 - behind / spinner.dots // qmllint disable unqualified
        }
    }

    Timer {
        interval: 100
        repeat: true
        running: spinner.visible
        onTriggered: spinner.lit = (spinner.lit + 1) % spinner.dots
    }
}
