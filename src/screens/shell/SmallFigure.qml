import QtQuick
import Tarnwick.Components

/// A figure over what it counts, small enough for three in a row of the sidebar.
Column {
    id: figure

    required property string value
    required property string label

    spacing: 2

    Figure {
        text: figure.value
        font: Theme.font(13, Font.DemiBold)
    }

    MicroLabel {
        text: figure.label
    }
}
