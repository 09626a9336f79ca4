import QtQuick
import Tarnwick.Components

/// One side of a drift.
Item {
    id: figure

    required property string value
    required property string label
    required property int tint

    implicitWidth: cell.implicitWidth
    implicitHeight: cell.implicitHeight

    StatCell {
        id: cell

        width: figure.width
        value: figure.value
        label: figure.label
        tint: Theme.tint(figure.tint)
    }
}
