import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// A short message at the window's edge. "Undo" is drawn and named but does nothing: changes are
/// taken back in the change log.
Rectangle {
    id: bar

    required property ToastPresenter presenter
    required property real widest

    /// The bar of the first message comes into view like any other.
    property bool made: false

    implicitWidth: row.implicitWidth + 32
    implicitHeight: row.implicitHeight + 22
    radius: 12
    color: Theme.ink
    opacity: bar.made && bar.presenter.shown ? 1 : 0
    visible: bar.opacity > 0
    enabled: bar.presenter.shown
    Accessible.role: Accessible.AlertMessage
    Accessible.name: bar.presenter.message
    Component.onCompleted: bar.made = true

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.InOutQuad
        }
    }

    SoftShadow {
        color: Theme.toastShadow.color
        blur: Theme.toastShadow.radius
        offset: Theme.toastShadow.y
        corner: bar.radius
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 9

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "checkmark.circle.fill"
            size: 16
            color: Theme.accent2
        }

        PlainText {
            id: message

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, bar.widest - 220)
            text: bar.presenter.message
            color: Theme.onFill
            font: Theme.font(13, Font.Medium)
            wrapMode: Text.Wrap
        }

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            visible: bar.presenter.reversible
            text: "· reversible"
            color: Theme.neutral400
            font: Theme.font(13)
        }

        PlainButton {
            id: undo

            anchors.verticalCenter: parent.verticalCenter
            visible: bar.presenter.reversible
            text: "Undo"
            corner: 6
            horizontalPadding: 6
            contentItem: IconLine {
                text: undo.text
                color: Theme.onFill
            }
            background: Rectangle {
                radius: 6
                color: undo.down ? Theme.neutral700 : undo.hovered ? Theme.neutral800 : "transparent"
            }
        }
    }
}
