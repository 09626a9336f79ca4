import QtQuick
import Tarnwick.Components
import QtQuick.Templates as T

/// What every control that can be pressed is made of: pointer, Enter, Space, the screen reader's
/// press and the focus ring. Draws nothing of its own but the ring and a quiet ground under the
/// pointer.
T.AbstractButton {
    id: button

    /// Stands beside the resting pointer, in the window. Every control without words has one.
    property string hint

    property real corner: Theme.radius.control
    property real ringGap: 2
    property color ringColor: Theme.focusRing

    /// The same as a press by the pointer.
    function press() {
        if (button.enabled)
            button.clicked();
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: button.text
    // Of a control that is disabled the library tells a screen reader nothing.
    Accessible.readOnly: !button.enabled
    Accessible.onPressAction: button.press()
    Keys.onReturnPressed: event => event.isAutoRepeat || button.press()
    Keys.onEnterPressed: event => event.isAutoRepeat || button.press()

    background: Rectangle {
        radius: Math.min(button.corner, height / 2)
        color: button.down ? Theme.pressFill : button.enabled && button.hovered ? Theme.hoverFill : "transparent"
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    FocusRing {
        corner: button.corner
        gap: button.ringGap
        border.color: button.ringColor
        visible: button.visualFocus
    }
}
