import QtQuick
import Tarnwick.Components

/// A short word in a capsule, filled while it is active.
Rectangle {
    id: pill

    required property string text
    property bool active: false
    property color tint: Theme.ink
    /// Whether something around it says the same to a screen reader.
    property bool quiet: false

    implicitWidth: words.implicitWidth + 22
    implicitHeight: words.implicitHeight + 10
    radius: Math.min(Theme.radius.pill, height / 2)
    color: pill.active ? pill.tint : "transparent"
    border.width: pill.active ? 0 : 1
    border.color: Theme.controlRule

    PlainText {
        id: words

        anchors.centerIn: parent
        text: pill.text
        color: pill.active ? Theme.onFill : pill.tint
        font: Theme.font(11.5)
        Accessible.ignored: pill.quiet
    }
}
