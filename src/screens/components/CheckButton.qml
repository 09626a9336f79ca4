import QtQuick
import Tarnwick.Components

/// A control that is on or off. Shows what `on` says: who owns that changes it when the control is
/// pressed. Draws nothing of its own.
PlainButton {
    id: button

    property bool on: false

    checkable: true
    checked: button.on
    // A press turns it over by itself; it is for the owner to say so.
    onCheckedChanged: {
        if (button.checked !== button.on)
            button.checked = Qt.binding(() => button.on);
    }
    Accessible.role: Accessible.CheckBox
    Accessible.onToggleAction: button.press()
}
