import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// Something that could be tidied, in two or three lines, with the button that does it.
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

    Item {
        Layout.preferredWidth: 46
        Layout.fillHeight: true
        visible: line.lead.length > 0 || line.symbol.length > 0

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.symbol.length > 0
            symbol: line.symbol
            size: 24
            color: line.tint
        }

        Figure {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.lead.length > 0
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
            // The second of two crates must not go unseen behind the first.
            wrapMode: Text.Wrap
            maximumLineCount: 2
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
