import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// A card of labelled bars, or the sentence that says why there are none.
Card {
    id: card

    required property string title
    required property string trailing
    required property BarModel bars
    required property color tint
    property string emptyText

    spacing: 11
    stretched: true

    SectionHead {
        Layout.fillWidth: true
        Layout.bottomMargin: 2
        title: card.title
        trailing: card.trailing
    }

    PlainText {
        Layout.fillWidth: true
        visible: card.emptyText.length > 0
        text: card.emptyText
        color: Theme.inkSoft
        font: Theme.font(12.5)
        wrapMode: Text.Wrap
    }

    Repeater {
        model: card.bars

        BarRow {
            required property int count

            Layout.fillWidth: true
            value: count
            max: card.bars.most // qmllint disable unqualified
            Accessible.role: Accessible.ProgressBar
            Accessible.name: label
            Accessible.description: count
            tint: card.tint // qmllint disable unqualified
        }
    }

    Item {
        Layout.fillHeight: true
    }
}
