import QtQuick
import Tarnwick.Components
import QtQuick.Layouts

/// Something that one press does to many things at once: what it is about, and the button.
Card {
    id: offer

    required property string symbol
    required property string text
    /// More about it; none for none.
    property string detail
    required property string buttonTitle
    required property string buttonSymbol

    signal taken(Item button)

    RowLayout {
        Layout.fillWidth: true
        spacing: 14

        Icon {
            symbol: offer.symbol
            size: 22
            color: Theme.accent
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 3

            PlainText {
                Layout.fillWidth: true
                text: offer.text
                font: Theme.font(13.5, Font.DemiBold)
                wrapMode: Text.Wrap
            }

            PlainText {
                Layout.fillWidth: true
                visible: offer.detail.length > 0
                text: offer.detail
                color: Theme.inkSoft
                font: Theme.font(12.5)
                wrapMode: Text.Wrap
            }
        }

        PrimaryButton {
            id: button

            title: offer.buttonTitle
            symbol: offer.buttonSymbol
            onClicked: offer.taken(button)
        }
    }
}
