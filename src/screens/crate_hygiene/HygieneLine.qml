import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// Something that could be tidied, in two lines, with the button that does it.
RowLayout {
    id: line

    required property string lead
    required property string symbol
    required property color tint
    required property string title
    required property string detail
    required property string action
    required property string actionSymbol

    signal actPressed(Item button)

    spacing: 14

    Icon {
        visible: line.symbol.length > 0
        symbol: line.symbol
        size: 22
        color: line.tint
    }

    Item {
        Layout.preferredWidth: 46
        Layout.fillHeight: true
        visible: line.lead.length > 0

        Figure {
            anchors.verticalCenter: parent.verticalCenter
            text: line.lead
            color: line.tint
            font: Theme.display(15)
        }
    }

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 3

        PlainText {
            Layout.fillWidth: true
            text: line.title
            font: Theme.font(13.5, Font.Medium)
            maximumLineCount: 1
            elide: Text.ElideRight
        }

        PlainText {
            Layout.fillWidth: true
            text: line.detail
            color: Theme.inkSoft
            font: Theme.font(12)
            maximumLineCount: 1
            elide: Text.ElideRight
        }
    }

    PrimaryButton {
        id: button

        Layout.maximumWidth: 260
        activeFocusOnTab: false
        visible: line.action.length > 0
        title: line.action
        symbol: line.actionSymbol
        Accessible.description: line.title
        onClicked: line.actPressed(button)
    }
}
