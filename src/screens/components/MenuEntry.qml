import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// A choice in the list of a MenuButton, with a mark while it is the present one.
T.MenuItem {
    id: entry

    property bool current: false

    implicitWidth: words.implicitWidth + leftPadding + rightPadding
    implicitHeight: words.implicitHeight + topPadding + bottomPadding
    leftPadding: 9
    rightPadding: 9
    topPadding: 7
    bottomPadding: 7
    hoverEnabled: true
    Accessible.role: Accessible.MenuItem
    Accessible.name: entry.text
    Accessible.onPressAction: entry.clicked()
    Keys.onReturnPressed: entry.clicked()
    Keys.onEnterPressed: entry.clicked()
    contentItem: Item { // qmllint disable deferred-property-id
        implicitHeight: words.implicitHeight

        PlainText {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 24
            text: entry.text
            color: entry.highlighted ? Theme.accent700 : Theme.ink
            font: Theme.font(13, entry.current ? Font.DemiBold : Font.Normal)
            elide: Text.ElideRight
            Accessible.ignored: true
        }

        Icon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: entry.current
            symbol: "checkmark"
            size: 13
            color: Theme.accent
            heavy: true
        }
    }
    background: Rectangle {
        radius: 7
        color: entry.highlighted ? Theme.accent100 : "transparent"
    }
}
