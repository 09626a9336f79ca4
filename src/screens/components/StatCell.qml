import QtQuick
import Tarnwick.Components

/// A figure over what it counts.
Column {
    id: cell

    required property string value
    required property string label
    property color tint: Theme.ink

    spacing: 3

    Figure {
        text: cell.value
        color: cell.tint
        font: Theme.display(26)
    }

    MicroLabel {
        text: cell.label
    }
}
