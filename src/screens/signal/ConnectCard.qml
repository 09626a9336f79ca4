import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What stands in the place of everything else until the user has named a server.
Card {
    id: card

    required property SignalPresenter presenter

    padding: 24
    spacing: 0

    PlainText {
        Layout.fillWidth: true
        text: "Connect to your crew's Signal"
        font: Theme.display(17)
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
    }

    PlainText {
        Layout.fillWidth: true
        Layout.maximumWidth: 644
        Layout.topMargin: 8
        Layout.bottomMargin: 18
        text: "Point Tarnwick at the Signal server your community runs. Nothing is shared until you turn sharing on — and even then it's just anonymised play counts (no names, venues, or times finer than a week)."
        color: Theme.inkSoft
        lineHeight: 1.3
        wrapMode: Text.Wrap
    }

    ServerField {
        Layout.fillWidth: true
        Layout.maximumWidth: 520
        presenter: card.presenter
    }
}
