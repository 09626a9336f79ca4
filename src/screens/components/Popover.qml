import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// A panel that floats beside the control that opens it, and keeps the keyboard until it closes: at
/// Escape, or at a press anywhere else. Then the control has the keyboard again.
T.Popup {
    id: popover

    required property T.Control opener

    property int reasonBefore: Qt.OtherFocusReason

    parent: popover.opener
    y: popover.opener.height + 8
    margins: 12
    padding: 18
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onAboutToShow: popover.reasonBefore = popover.opener.focusReason
    onClosed: popover.opener.forceActiveFocus(popover.reasonBefore)
    background: Rectangle {
        radius: Theme.radius.card
        color: Theme.card
        border.color: Theme.controlRule

        SoftShadow {
            color: Theme.panelShadow.color
            blur: Theme.panelShadow.radius
            offset: Theme.panelShadow.y
            corner: Theme.radius.card
        }
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motion
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.motion
        }
    }
}
