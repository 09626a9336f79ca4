import QtQuick
import Tarnwick.Components

/// A figure over its label, both in the middle of a place of fixed width, so that a growing number
/// moves nothing.
Column {
    id: figure

    required property string value
    required property string label

    width: 110
    spacing: 3

    Figure {
        anchors.horizontalCenter: parent.horizontalCenter
        text: figure.value
        font: Theme.display(20)
    }

    MicroLabel {
        width: parent.width
        text: figure.label
        horizontalAlignment: Text.AlignHCenter
    }
}
