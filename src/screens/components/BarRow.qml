import QtQuick
import Tarnwick.Components
import QtQuick.Layouts

/// A labelled bar, as long as its value's share of the most that there is.
ColumnLayout {
    id: row

    required property string label
    required property real value
    required property real max
    property string trailing
    property color tint: Theme.ink

    readonly property real fraction: row.max > 0 ? row.value / row.max : 0

    spacing: 5

    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        PlainText {
            Layout.fillWidth: true
            text: row.label
            font: Theme.font(12.5)
            elide: Text.ElideRight
        }

        Figure {
            visible: row.trailing.length > 0
            text: row.trailing
            color: Theme.inkSoft
            font: Theme.font(12)
        }
    }

    Meter {
        Layout.fillWidth: true
        fraction: row.fraction
        tint: row.tint
    }
}
