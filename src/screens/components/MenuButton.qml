import QtQuick
import QtQml
import QtQuick.Templates as T
import Tarnwick.Components

/// A button that says what is chosen and opens the list of choices. Who owns the choice changes it
/// when one is chosen.
PlainButton {
    id: button

    /// Name of a symbol; none for none.
    property string symbol
    /// A list of texts.
    property var entries: []
    readonly property bool isOpen: menu.visible
    readonly property real gap: 4

    /// The list is about to be seen.
    signal opened
    signal chosen(string entry)

    horizontalPadding: 12
    verticalPadding: 9
    Keys.onDownPressed: button.press()
    onClicked: {
        if (menu.visible) {
            menu.close();
            return;
        }
        button.opened();
        menu.byKeyboard = button.visualFocus;
        const below = button.mapToItem(null, 0, button.height).y + button.gap;
        menu.opensUp = below + menu.height + menu.margins > button.Window.height;
        menu.open();
    }
    contentItem: Item { // qmllint disable deferred-property-id
        implicitWidth: face.implicitWidth + 10 + arrows.width
        implicitHeight: face.implicitHeight

        Row {
            id: face

            anchors.verticalCenter: parent.verticalCenter
            spacing: 9

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.symbol.length > 0
                symbol: button.symbol
                size: 15
            }

            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, button.availableWidth - 15 - 9 - 10 - arrows.width)
                text: button.text
                font: Theme.font(13, Font.Medium)
                elide: Text.ElideRight
                Accessible.ignored: true
            }
        }

        Icon {
            id: arrows

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "chevron.up.chevron.down"
            size: 13
            color: Theme.inkSoft
            heavy: true
        }
    }
    background: Rectangle {
        radius: Theme.radius.control
        color: button.down || menu.visible ? Theme.neutral200 : button.hovered ? Theme.neutral100 : Theme.card
        border.color: Theme.controlRule
    }

    T.Menu {
        id: menu

        /// Where there is no room below.
        property bool opensUp: false
        property bool byKeyboard: false

        y: menu.opensUp ? -menu.height - button.gap : button.height + button.gap
        width: button.width
        height: Math.min(implicitHeight, 320)
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        padding: 5
        margins: 12
        focus: true
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
        onClosed: button.forceActiveFocus(menu.byKeyboard ? Qt.TabFocusReason : Qt.PopupFocusReason)

        Instantiator {
            model: button.entries
            delegate: MenuEntry {
                required property string modelData

                text: modelData
                current: modelData === button.text // qmllint disable unqualified
                onTriggered: button.chosen(modelData) // qmllint disable unqualified
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }

        contentItem: ListView {
            implicitHeight: contentHeight
            model: menu.contentModel
            currentIndex: menu.currentIndex
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            keyNavigationEnabled: false
        }

        background: Rectangle {
            radius: Theme.radius.control + 2
            color: Theme.card
            border.color: Theme.controlRule

            SoftShadow {
                color: Theme.toastShadow.color
                blur: Theme.toastShadow.radius
                offset: Theme.toastShadow.y
                corner: Theme.radius.control + 2
            }
        }
    }
}
