import QtQuick
import Tarnwick.Components

/// A wide button that says what is chosen and opens the list of choices. Who owns the choice changes
/// it when one is picked.
PlainButton {
    id: button

    /// Name of a symbol; none for none.
    property string symbol
    property alias choices: list.choices
    readonly property bool isOpen: list.visible

    /// The list is about to be seen.
    signal opened
    signal picked(int index)

    horizontalPadding: 12
    verticalPadding: 9
    Keys.onDownPressed: button.press()
    onClicked: {
        if (!list.opened)
            button.opened();
        list.toggle();
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
        color: button.down || list.visible ? Theme.neutral200 : button.hovered ? Theme.neutral100 : Theme.card
        border.color: Theme.controlRule
    }

    ChoiceList {
        id: list

        opener: button
        title: button.text
        chosen: list.choices.indexOf(button.text)
        onPicked: index => button.picked(index)
    }
}
