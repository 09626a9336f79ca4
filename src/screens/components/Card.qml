import QtQuick
import Tarnwick.Components
import QtQuick.Layouts

/// A white sheet. Its content stands in a column as wide as the sheet inside its padding.
Rectangle {
    id: card

    property real padding: 18
    /// Less where the last row brings room of its own.
    property real bottomPadding: card.padding
    /// Whether the column takes up a sheet that is higher than its content.
    property bool stretched: false
    property alias spacing: column.spacing
    default property alias content: column.data

    implicitWidth: column.implicitWidth + 2 * card.padding
    implicitHeight: column.implicitHeight + card.padding + card.bottomPadding
    color: Theme.card
    radius: Theme.radius.card
    border.color: Theme.sectionRule

    ColumnLayout {
        id: column

        x: card.padding
        y: card.padding
        width: card.width - 2 * card.padding
        height: card.stretched ? card.height - card.padding - card.bottomPadding : implicitHeight
        spacing: 0
    }
}
