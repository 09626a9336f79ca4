import QtQuick
import Tarnwick.Components

/// A thing that is on or off, told by its words.
CheckButton {
    id: toggle

    /// Whether its words stand elsewhere, so that only a screen reader hears them from here.
    property bool bare: false

    horizontalPadding: 8
    verticalPadding: 6
    contentItem: Item { // qmllint disable deferred-property-id
        implicitWidth: (toggle.bare ? 0 : words.implicitWidth + 9) + track.width
        implicitHeight: Math.max(words.implicitHeight, track.height)

        PlainText {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            visible: !toggle.bare
            text: toggle.text
            color: toggle.enabled ? Theme.ink : Theme.neutral400
            font: Theme.font(13, Font.Medium)
            Accessible.ignored: true
        }

        Rectangle {
            id: track

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 34
            height: 20
            radius: 10
            color: !toggle.on ? Theme.neutral400 : toggle.enabled ? Theme.accent : Theme.neutral300

            Rectangle {
                x: toggle.on ? track.width - width - 2 : 2
                y: 2
                width: 16
                height: 16
                radius: 8
                color: Theme.onFill

                Behavior on x {
                    NumberAnimation {
                        duration: Theme.motion
                        easing.type: Easing.InOutQuad
                    }
                }
            }
        }
    }
}
