import QtQuick
import Tarnwick.Components

/// The one thing to do in its place. When it is not enabled it doesn't act.
PlainButton {
    id: button

    property string title
    /// Name of a symbol; none for none.
    property string symbol

    text: button.title
    ringGap: 4
    horizontalPadding: 15
    verticalPadding: 9
    contentItem: IconLine {
        text: button.title
        symbol: button.symbol
        color: Theme.onFill
    }
    background: Rectangle {
        radius: Theme.radius.control
        color: !button.enabled ? Theme.neutral400 : button.down ? Theme.accent700 : button.hovered ? Theme.accent600 : Theme.accent

        SoftShadow {
            color: Theme.buttonShadow.color
            blur: Theme.buttonShadow.radius
            offset: Theme.buttonShadow.y
            corner: Theme.radius.control
        }
    }
}
