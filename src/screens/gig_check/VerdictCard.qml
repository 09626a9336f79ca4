import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The verdict on the set, and what it comes to.
Card {
    id: card

    required property GigCheckPresenter presenter

    spacing: 6

    Row {
        spacing: 12

        PlainText {
            id: verdict

            text: card.presenter.verdict
            color: Theme.tint(card.presenter.verdictTint)
            font: Theme.display(30)
            Accessible.role: Accessible.Heading
        }

        Figure {
            anchors.baseline: verdict.baseline
            text: card.presenter.tracks
            color: Theme.inkSoft
        }
    }

    PlainText {
        Layout.fillWidth: true
        text: card.presenter.sentence
        color: Theme.inkSoft
        font: Theme.font(13.5)
        wrapMode: Text.Wrap
    }

    PlainText {
        Layout.fillWidth: true
        visible: card.presenter.isEmpty
        text: "Pick one or more crates to check."
        color: Theme.inkSoft
        font: Theme.font(13.5)
        wrapMode: Text.Wrap
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 4
        visible: card.presenter.isGood
        spacing: 8

        Icon {
            symbol: "checkmark.seal.fill"
            size: 18
            color: Theme.good
        }

        PlainText {
            Layout.fillWidth: true
            text: "This set is good to play."
            font: Theme.font(13, Font.DemiBold)
            wrapMode: Text.Wrap
        }
    }
}
