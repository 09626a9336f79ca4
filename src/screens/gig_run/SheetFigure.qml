import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A figure of the set sheet below its name. Keeps its place where it has no value.
Column {
    id: cell

    required property string label
    required property string value

    Layout.fillWidth: true
    Layout.preferredWidth: 1
    spacing: 4

    MicroLabel {
        text: cell.label
    }

    Figure {
        height: 26
        text: cell.value
        font: Theme.display(20)
        Accessible.ignored: cell.value.length === 0
    }
}
