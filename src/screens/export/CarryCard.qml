import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What comes along to the chosen target.
Card {
    id: card

    required property ExportPresenter presenter

    bottomPadding: note.visible ? card.padding : 10

    SectionHead {
        Layout.fillWidth: true
        Layout.bottomMargin: 6
        title: "What carries over"
    }

    Repeater {
        model: card.presenter.carries

        CarryRow {
            Layout.fillWidth: true
        }
    }

    PlainText {
        id: note

        Layout.fillWidth: true
        Layout.topMargin: 8
        visible: note.text.length > 0
        text: card.presenter.stemsNote
        color: Theme.inkSoft
        font: Theme.font(12)
        wrapMode: Text.Wrap
    }
}
