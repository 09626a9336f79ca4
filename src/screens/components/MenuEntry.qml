import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// A choice in the list of a button, with a mark while it is the present one. A screen reader takes
/// no PlainButton for an entry of a menu.
T.MenuItem {
    id: entry

    property bool current: false

    implicitWidth: words.implicitWidth + 36
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    activeFocusOnTab: false
    Accessible.name: entry.text
    Accessible.selectable: true
    Accessible.selected: entry.current
    Accessible.onPressAction: entry.clicked()
    Keys.onReturnPressed: event => event.isAutoRepeat || entry.clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || entry.clicked()
    contentItem: Item { // qmllint disable deferred-property-id
        Icon {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: entry.current
            symbol: "checkmark"
            size: 12
            color: Theme.accent
            heavy: true
        }

        PlainText {
            id: words

            x: 28
            width: parent.width - 36
            anchors.verticalCenter: parent.verticalCenter
            text: entry.text
            font: Theme.font(12.5)
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius.control
        color: entry.down ? Theme.pressFill : entry.activeFocus ? Theme.hoverFill : "transparent"
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    FocusRing {
        corner: Theme.radius.control
        gap: -2
        border.color: Theme.focusRing
        visible: entry.visualFocus
    }
}
