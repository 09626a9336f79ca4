import QtQuick
import Tarnwick.Components

/// A thing to do that is not the first.
PlainButton {
    id: button

    property string title
    /// Name of a symbol; none for none.
    property string symbol

    text: button.title
    horizontalPadding: 14
    verticalPadding: 8
    contentItem: IconLine {
        text: button.title
        symbol: button.symbol
        color: button.enabled ? Theme.ink : Theme.neutral400
    }
    background: Rectangle {
        radius: Theme.radius.control
        color: button.down ? Theme.neutral200 : button.enabled && button.hovered ? Theme.neutral100 : Theme.card
        border.color: Theme.controlRule
    }
}
