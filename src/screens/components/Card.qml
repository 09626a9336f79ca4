import QtQuick
import Tarnwick.Components
import QtQuick.Layouts

/// A white sheet. Its content stands in a column as wide as the sheet inside its padding.
Rectangle {
    id: card

    property real padding: 18
    property alias spacing: column.spacing
    default property alias content: column.data

    implicitWidth: column.implicitWidth + 2 * card.padding
    implicitHeight: column.implicitHeight + 2 * card.padding
    color: Theme.card
    radius: Theme.radius.card
    border.color: Theme.sectionRule

    ColumnLayout {
        id: column

        x: card.padding
        y: card.padding
        width: card.width - 2 * card.padding
        spacing: 0
    }
}
