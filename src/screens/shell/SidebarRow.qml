import QtQuick
import Tarnwick.Components

/// A screen in the sidebar. One that is not built yet is dimmed, but can be selected like the others.
PlainButton {
    id: row

    required property string title
    required property string symbol
    required property string badge
    required property bool implemented
    required property bool selected

    /// The focus ring of a dimmed row is as strong as any.
    readonly property real presence: row.implemented ? 1 : 0.5

    text: row.title
    ringGap: row.selected ? -3 : -1
    ringColor: row.selected ? Theme.onFill : Theme.focusRing
    horizontalPadding: 10
    verticalPadding: 5
    Accessible.description: row.badge
    Accessible.selectable: true
    Accessible.selected: row.selected

    contentItem: Item { // qmllint disable deferred-property-id
        implicitHeight: Math.max(icon.height, Math.ceil(words.implicitHeight))
        // White on the paler ground of a selected row is what half of both comes to.
        opacity: row.selected ? 1 : row.presence

        Icon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            symbol: row.symbol
            color: row.selected ? Theme.onFill : Theme.inkSoft
        }

        PlainText {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            anchors.left: icon.right
            anchors.leftMargin: 9
            anchors.right: figure.left
            anchors.rightMargin: figure.visible ? 9 : 0
            text: row.title
            color: row.selected ? Theme.onFill : Theme.ink
            font: Theme.font(13, row.selected ? Font.DemiBold : Font.Normal)
            elide: Text.ElideRight
            Accessible.ignored: true
        }

        Figure {
            id: figure

            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            width: Math.ceil(figure.implicitWidth)
            visible: row.badge.length > 0
            text: row.badge
            color: row.selected ? Theme.onFill : Theme.neutral700
            font: Theme.font(11.5, Font.Medium)
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        opacity: row.presence
        radius: Theme.radius.control
        color: row.selected ? (row.down ? Theme.accent700 : row.hovered ? Theme.accent600 : Theme.accent) : row.down ? Theme.pressFill : row.hovered ? Theme.hoverFill : "transparent"
    }
}
