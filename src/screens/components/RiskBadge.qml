import QtQuick
import Tarnwick.Components

/// Whether a fix can be left to the program, or is for the user to decide.
Rectangle {
    id: badge

    required property bool safe

    readonly property color tint: badge.safe ? Theme.good : Theme.warn

    implicitWidth: words.implicitWidth + 16
    implicitHeight: words.implicitHeight + 6
    radius: Math.min(Theme.radius.pill, height / 2)
    color: Qt.alpha(badge.tint, 0.1)

    PlainText {
        id: words

        anchors.centerIn: parent
        text: badge.safe ? "Safe" : "Your call"
        color: badge.tint
        font: Theme.font(10.5)
    }
}
