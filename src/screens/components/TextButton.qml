import QtQuick
import Tarnwick.Components

/// A thing to do that is told by its words alone.
PlainButton {
    id: button

    property color tint: Theme.ink

    horizontalPadding: 10
    verticalPadding: 7
    contentItem: IconLine {
        text: button.text
        color: button.enabled ? button.tint : Theme.neutral400
        font: Theme.font(12.5, Font.DemiBold)
    }
}
